// Member entries of host tables and method slots of class records: two words that stand for a member function.
//
// The first word is a function's address, or with bit 0 set its offset in the object's virtual table plus 1; the second
// is added to the object's address first. The rule is that of the tables themselves, whatever form the compiler gives
// its own member pointers. The object comes first, the other arguments behind it.
#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

/// Zero means: not provided.
struct AKMemberWords {
  std::uintptr_t function = 0;    ///< an address, or an offset in the virtual table plus 1
  std::ptrdiff_t adjustment = 0;  ///< bytes that are added to the object's address
};
static_assert(sizeof(AKMemberWords) == 16);

/// False for an odd function that can be no place in a virtual table: a plain function at an odd address, which a call
/// would take for one. Compilers put member functions at even addresses; of others -falign-functions=16 says so.
constexpr bool AKIsCallable(const AKMemberWords& words) {
  constexpr std::uintptr_t kLargestVirtualTable = 1 << 16;
  return (words.function & 1) == 0 ||
         (words.function < kLargestVirtualTable && (words.function - 1) % sizeof(std::uintptr_t) == 0);
}

/// The words of a member function; the adjustment is that from the class of the pointer's type.
template <typename Method>
requires std::is_member_function_pointer_v<Method> AKMemberWords AKMemberWordsOf(Method method) {
#if !defined(__x86_64__)
#error "member pointers of this machine have another form: make the two words here"
#endif
  static_assert(sizeof(Method) == sizeof(AKMemberWords));
  const auto words = std::bit_cast<AKMemberWords>(method);
  assert(AKIsCallable(words));
  return words;
}

/// Calls the function on an object. Both must exist.
template <typename Result, typename... Parameters>
Result AKCallMember(const AKMemberWords& words, void* object, Parameters... arguments) {
  auto* adjusted = static_cast<char*>(object) + words.adjustment;
  std::uintptr_t function = words.function;
  if ((function & 1) != 0) {
    const char* virtualTable = nullptr;
    std::memcpy(&virtualTable, adjusted, sizeof(virtualTable));
    std::memcpy(&function, virtualTable + (words.function - 1), sizeof(function));
  }
  using Function = Result (*)(void*, Parameters...);
  return reinterpret_cast<Function>(function)(adjusted, arguments...);
}

/// A member entry of a host table: 16 bytes that the host sets and the kit calls, both checked against the signature.
template <typename Signature>
class AKHostMember;

/// The entry of a function that takes `Parameters` and returns `Result`.
template <typename Result, typename... Parameters>
class AKHostMember<Result(Parameters...)> {
 public:
  ///@{
  /// For hosts: a function of `Host`, the class of the objects behind the kit's wrappers, or of one of its bases; it
  /// may be virtual. `Host` has to be named, since the adjustment is counted from it.
  template <typename Host>
  void Set(Result (std::type_identity_t<Host>::*method)(Parameters...)) {
    words_ = AKMemberWordsOf(method);
  }
  template <typename Host>
  void Set(Result (std::type_identity_t<Host>::*method)(Parameters...) const) {
    words_ = AKMemberWordsOf(method);
  }
  ///@}

  /// The entry must be set and the object exist.
  Result Call(void* hostObject, Parameters... arguments) const {
    return AKCallMember<Result, Parameters...>(words_, hostObject, arguments...);
  }

 private:
  AKMemberWords words_;
};

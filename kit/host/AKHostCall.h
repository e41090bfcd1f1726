// How entries of host tables are called.
//
// A table is an array of 8-byte words owned by the host; offsets are in bytes. A plain entry is one word, a function's
// address. A member entry is two words: a function's address, or with bit 0 set its offset in the host object's virtual
// table plus 1; and an adjustment that is added to the host object's address first. The rule is that of the tables
// themselves, whatever form the compiler gives its own member pointers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

inline std::uintptr_t AKHostTableWord(const void* table, std::size_t offset) {
  std::uintptr_t word = 0;
  std::memcpy(&word, static_cast<const char*>(table) + offset, sizeof(word));
  return word;
}

/// Calls the plain entry at `offset`. The table and the entry must exist.
template <typename Result, typename... Parameters>
Result AKHostCallPlain(const void* table, std::size_t offset, Parameters... arguments) {
  using Function = Result (*)(Parameters...);
  return reinterpret_cast<Function>(AKHostTableWord(table, offset))(arguments...);
}

/// Calls a function given as a member entry's two words on an object.
template <typename Result, typename... Parameters>
Result AKHostCallMethod(std::uintptr_t function, std::ptrdiff_t adjustment, void* object, Parameters... arguments) {
  auto* adjusted = static_cast<char*>(object) + adjustment;
  if ((function & 1) != 0) {
    const char* virtualTable = nullptr;
    std::memcpy(&virtualTable, adjusted, sizeof(virtualTable));
    function = AKHostTableWord(virtualTable, function - 1);
  }
  using Function = Result (*)(void*, Parameters...);
  return reinterpret_cast<Function>(function)(adjusted, arguments...);
}

/// Calls the member entry at `offset` on the host object. The table, the entry and the object must exist.
template <typename Result, typename... Parameters>
Result AKHostCallMember(const void* table, std::size_t offset, void* hostObject, Parameters... arguments) {
  const std::uintptr_t function = AKHostTableWord(table, offset);
  const auto adjustment = static_cast<std::ptrdiff_t>(AKHostTableWord(table, offset + sizeof(std::uintptr_t)));
  return AKHostCallMethod<Result, Parameters...>(function, adjustment, hostObject, arguments...);
}

// One call of an entry: told before it is made, held against what the interface promises afterwards.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "torture/Words.h"

namespace torture {

// The headings of docs/abi.md that findings name.
inline constexpr char kRecordSection[] = "Host service record";
inline constexpr char kTablesSection[] = "Tables";
inline constexpr char kGeneralSection[] = "General table, plain";
inline constexpr char kClassSection[] = "Class table, plain, 8 bytes an entry";
inline constexpr char kWithinSection[] = "Calls from within methods";
inline constexpr char kHandlerSection[] = "Handler table";
inline constexpr char kControlSection[] = "Control table";
inline constexpr char kPanelSection[] = "Panel table";
inline constexpr char kDescriptionSection[] = "Description strings";
inline constexpr char kDialogSection[] = "Dialogs, progress and texts";
inline constexpr char kClassRecordSection[] = "Class record";
inline constexpr char kInstanceSection[] = "Instances";

class Call {
 public:
  /// `entry` and `section` outlive the call.
  Call(std::string_view entry, std::string done, std::string_view section)
      : entry_(entry), done_(std::move(done)), section_(section) {}
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  /// Makes the call. What it throws is a finding, and the result then empty; so it is for an entry that is not there.
  template <typename Function>
  std::invoke_result_t<Function> operator()(Function&& function) {
    using Result = std::invoke_result_t<Function>;
    if (!Begin()) return Result();
    try {
      if constexpr (std::is_void_v<Result>) {
        function();
        return End();
      } else {
        Result result = function();
        End();
        return result;
      }
    } catch (const std::bad_alloc& thrown) {
      mayLackMemory_ ? GaveUp() : Threw(thrown.what());
    } catch (const std::exception& thrown) {
      Threw(thrown.what());
    } catch (...) {
      Threw("of no known kind");
    }
    return Result();
  }

  /// The same for what may take more memory than there is: of std::bad_alloc nothing is said.
  template <typename Function>
  std::invoke_result_t<Function> MayLackMemory(Function&& function) {
    mayLackMemory_ = true;
    return (*this)(std::forward<Function>(function));
  }

  /// A finding when it does not hold. Nothing is expected of a call that was not made.
  void Expect(bool holds, std::string_view expected, const std::string& seen) const {
    if (!holds && isKept_) Find(expected, seen);
  }
  template <typename Value>
  void ExpectIs(const Value& expected, const Value& seen) const {
    if (!IsSame(expected, seen) && isKept_) Find(TextOf(expected), TextOf(seen));
  }
  void ExpectStatus(int expected, int seen) const {
    Expect(expected == seen, "status " + std::to_string(expected), "status " + std::to_string(seen));
  }
  /// One that is below 0.
  void ExpectFailure(int seen) const { Expect(seen < 0, "a status below 0", "status " + std::to_string(seen)); }
  void ExpectNull(const void* seen) const { Expect(seen == nullptr, "null", "an address"); }

 private:
  bool Begin();
  void End() const;
  void GaveUp();
  void Threw(const char* what);
  void Find(std::string_view expected, const std::string& seen) const;

  std::string_view entry_;
  std::string done_;
  std::string_view section_;
  bool isKept_ = true;
  bool mayLackMemory_ = false;
};

}  // namespace torture

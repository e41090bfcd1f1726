// What a check is given: the bundle, the seed, and a place to say what it does and what it found.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/validator/Board.h"
#include "host/validator/Check.h"
#include "host/validator/Dice.h"

namespace host::validator {

/// How a check is run.
struct TrialPlan {
  std::string bundle;  ///< the file
  std::uint64_t seed = 1;
  int level = 5;                                     ///< 1 to 10
  double seconds = 60;                               ///< the limit of one check
  std::optional<std::uint64_t> step;                 ///< this case alone
  std::optional<std::vector<std::uint32_t>> kept{};  ///< of the case's sequence these operations alone, ascending
};

class Trial {
 public:
  /// All three outlive the trial.
  Trial(const Check& check, const TrialPlan& plan, Board* board) : check_(check), plan_(plan), board_(*board) {}

  const std::string& Bundle() const { return plan_.bundle; }
  int Level() const { return plan_.level; }
  /// How many random cases to try, of `atFive` at level 5: a tenth of what level 10 tries at level 3, a hundredth at
  /// level 1.
  std::size_t Cases(std::size_t atFive) const;
  Dice DiceOf(std::uint64_t step) const { return {plan_.seed, check_.id, step}; }

  /// Begins a case, unless another one alone is to be run.
  bool Wants(std::uint64_t step);
  /// What is about to be done: shown when it goes wrong, also when the bundle crashes in it.
  void Do(std::string_view what);
  /// Of a sequence of `count` operations: true for one that is to be done.
  bool WantsOperation(std::uint32_t operation, std::uint32_t count);
  /// An operation of a sequence, in words.
  void Tell(std::string_view operation);

  /// Goes on, or ends the process with the finding.
  void Expect(bool holds, std::string_view expected, std::string_view seen) {
    if (!holds) Fail(expected, seen);
  }
  [[noreturn]] void Fail(std::string_view expected, std::string_view seen);
  /// Nothing to check here.
  [[noreturn]] void Skip(std::string_view reason);

 private:
  const Check& check_;
  const TrialPlan& plan_;
  Board& board_;
  std::size_t historyEnd_ = 0;
};

}  // namespace host::validator

#include "host/validator/Trial.h"

#include <unistd.h>

#include <algorithm>

namespace host::validator {

std::size_t Trial::Cases(std::size_t atFive) const {
  const auto effort = static_cast<std::size_t>(plan_.level) * static_cast<std::size_t>(plan_.level);
  return std::max<std::size_t>(1, atFive * effort / 25);
}

bool Trial::Wants(std::uint64_t step) {
  if (plan_.step && *plan_.step != step) return false;
  board_.hasStep = 1;
  board_.step = step;
  board_.history[0] = '\0';
  historyEnd_ = 0;
  return true;
}

void Trial::Do(std::string_view what) { PutText(board_.doing, what); }

bool Trial::WantsOperation(std::uint32_t operation, std::uint32_t count) {
  board_.operations = count;
  if (plan_.kept && !std::binary_search(plan_.kept->begin(), plan_.kept->end(), operation)) return false;
  board_.operation = operation;
  return true;
}

void Trial::Tell(std::string_view operation) {
  historyEnd_ = PutText(board_.history, operation, historyEnd_);
  historyEnd_ = PutText(board_.history, "\n", historyEnd_);
}

void Trial::Fail(std::string_view expected, std::string_view seen) {
  PutText(board_.expected, expected);
  PutText(board_.seen, seen);
  board_.state = Board::kFailed;
  _exit(1);
}

void Trial::Skip(std::string_view reason) {
  PutText(board_.seen, reason);
  board_.state = Board::kSkipped;
  _exit(0);
}

}  // namespace host::validator

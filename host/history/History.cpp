#include "host/history/History.h"

namespace host {

void History::Push(std::unique_ptr<UndoStep> step) {
  while (steps_.size() > position_) {
    bytes_ -= steps_.back().bytes;
    steps_.pop_back();
  }
  if (clean_ && *clean_ > position_) clean_.reset();
  const std::size_t bytes = step->Bytes();
  steps_.push_back({std::move(step), bytes});
  bytes_ += bytes;
  ++position_;
  while (steps_.size() > 1 && (steps_.size() > kMostSteps || bytes_ > kMostBytes)) ForgetFront();
}

void History::ForgetFront() {
  bytes_ -= steps_.front().bytes;
  steps_.pop_front();
  --position_;
  if (!clean_) return;
  if (*clean_ == 0) {
    clean_.reset();
  } else {
    --*clean_;
  }
}

UndoStep* History::StepBack() { return CanUndo() ? steps_[--position_].step.get() : nullptr; }
UndoStep* History::StepForward() { return CanRedo() ? steps_[position_++].step.get() : nullptr; }

}  // namespace host

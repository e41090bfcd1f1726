// The undo history of a session: steps that were made, and behind the position steps that can be redone.
//
// Memory is bounded: beyond 10,000 steps or 256 MiB the oldest steps are forgotten; the last one always stays. The
// clean mark is the position at which the document was saved: undoing or redoing back to it makes it unchanged again.
#pragma once

#include <deque>
#include <memory>
#include <optional>

#include "host/history/UndoStep.h"

namespace host {

class History {
 public:
  static constexpr std::size_t kMostSteps = 10000;
  static constexpr std::size_t kMostBytes = std::size_t{256} << 20;

  bool CanUndo() const { return position_ > 0; }
  bool CanRedo() const { return position_ < steps_.size(); }
  /// The name of the step that would be undone or redone; empty when there is none.
  std::string UndoName() const { return CanUndo() ? steps_[position_ - 1].step->name : std::string(); }
  std::string RedoName() const { return CanRedo() ? steps_[position_].step->name : std::string(); }

  /// All steps that are known, the oldest first; those from Position() on can be redone.
  std::size_t Count() const { return steps_.size(); }
  std::size_t Position() const { return position_; }
  const std::string& NameAt(std::size_t index) const { return steps_[index].step->name; }
  std::size_t Bytes() const { return bytes_; }

  /// Takes a sealed step; what could be redone is forgotten.
  void Push(std::unique_ptr<UndoStep> step);
  /// Null when there is none. The step stays the history's.
  UndoStep* StepBack();
  UndoStep* StepForward();

  void MarkClean() { clean_ = position_; }
  /// The document as it is now is saved nowhere.
  void MarkNeverClean() { clean_.reset(); }
  bool IsClean() const { return clean_ == position_; }

 private:
  struct Entry {
    std::unique_ptr<UndoStep> step;
    std::size_t bytes;
  };

  void ForgetFront();

  std::deque<Entry> steps_;
  std::size_t position_ = 0;
  std::size_t bytes_ = 0;
  std::optional<std::size_t> clean_ = 0;
};

}  // namespace host

#include "platform/raster/Cells.h"

#include <cstdlib>
#include <exception>

namespace raster {
namespace {

// Rows of bits are whole words, so narrow tiles have more of them than their cells need: the narrowest row of cells is
// one group and has a word.
constexpr std::size_t kMaxCells = Workspace::kBytes / sizeof(std::int32_t);
constexpr std::size_t kBitWords = kMaxCells / kGroup / 64 + std::size_t{Workspace::kMaxTileHeight};

template <typename T>
T* Zeros(std::size_t count) {
  return static_cast<T*>(std::calloc(count, sizeof(T)));
}

static_assert((Workspace::kMaxTileWidth + 2 + kGroup) * sizeof(std::int64_t) <= Workspace::kBytes);

}  // namespace

void Workspace::Free::operator()(void* memory) const { std::free(memory); }

bool Workspace::Take() {
  cells_.reset(Zeros<std::int32_t>(kMaxCells));
  bits_.reset(Zeros<std::uint64_t>(kBitWords));
  left_.reset(Zeros<std::int64_t>(std::size_t{kMaxTileHeight} + 1));
  return cells_ != nullptr && bits_ != nullptr && left_ != nullptr;
}

Workspace* Workspace::OfThread() {
  thread_local Workspace workspace;
  if (workspace.cells_ == nullptr && !workspace.Take()) {
    workspace = {};
    return nullptr;
  }
  return &workspace;
}

WorkspaceLease::WorkspaceLease() : workspace_(Workspace::OfThread()), exceptions_(std::uncaught_exceptions()) {
  if (workspace_ != nullptr && workspace_->isLent_) workspace_ = own_.Take() ? &own_ : nullptr;
  if (workspace_ != nullptr) workspace_->isLent_ = true;
}

WorkspaceLease::~WorkspaceLease() {
  if (workspace_ == nullptr) return;
  workspace_->isLent_ = false;
  if (std::uncaught_exceptions() > exceptions_) *workspace_ = {};  // its cells are not zero
}

}  // namespace raster

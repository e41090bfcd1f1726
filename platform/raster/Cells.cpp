#include "platform/raster/Cells.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

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

// A thread's own would be simpler, but the system ends a process that has no memory to note a thread's things.
constinit std::array<std::atomic<Workspace*>, 4> sIdle{};

}  // namespace

void Workspace::Free::operator()(void* memory) const { std::free(memory); }

std::unique_ptr<Workspace> Workspace::New() {
  std::unique_ptr<Workspace> workspace(new (std::nothrow) Workspace);
  if (workspace == nullptr) return nullptr;
  workspace->cells_.reset(Zeros<std::int32_t>(kMaxCells));
  workspace->bits_.reset(Zeros<std::uint64_t>(kBitWords));
  workspace->left_.reset(Zeros<std::int64_t>(std::size_t{kMaxTileHeight} + 1));
  const bool isWhole = workspace->cells_ != nullptr && workspace->bits_ != nullptr && workspace->left_ != nullptr;
  return isWhole ? std::move(workspace) : nullptr;
}

WorkspaceLease::WorkspaceLease() : exceptions_(std::uncaught_exceptions()) {
  for (std::atomic<Workspace*>& idle : sIdle) {
    workspace_.reset(idle.exchange(nullptr, std::memory_order_acquire));
    if (workspace_ != nullptr) return;
  }
  workspace_ = Workspace::New();
}

WorkspaceLease::~WorkspaceLease() {
  if (workspace_ == nullptr || std::uncaught_exceptions() > exceptions_) return;  // then its cells are not zero
  for (std::atomic<Workspace*>& idle : sIdle) {
    Workspace* none = nullptr;
    if (idle.compare_exchange_strong(none, workspace_.get(), std::memory_order_release)) {
      static_cast<void>(workspace_.release());
      return;
    }
  }
}

}  // namespace raster

#include "host/window/MemoryReserve.h"

#include <glib.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <utility>

namespace host {
namespace {

constexpr std::size_t kBytes = std::size_t{8} << 20;

std::atomic<void*> sReserve{nullptr};
std::function<void()> sUsed;

// Allocations are made on any thread.
void Use() {
  void* const reserve = sReserve.exchange(nullptr);
  if (reserve == nullptr) throw std::bad_alloc();
  std::free(reserve);
  g_idle_add_once([](void*) { sUsed(); }, nullptr);
}

}  // namespace

void MemoryReserve::Keep(std::function<void()> used) {
  sUsed = std::move(used);
  Fill();
  std::set_new_handler(&Use);
}

void MemoryReserve::Fill() {
  if (sReserve == nullptr) std::free(sReserve.exchange(std::malloc(kBytes)));
}

}  // namespace host

#include "kit/containers/AKStreamMemory.h"

#include <cstdlib>
#include <new>

void AKStreamMemory::Grow(std::size_t size) {
  if (size <= this->size()) return;
  auto* const grown = static_cast<unsigned char*>(std::realloc(begin_, size));
  if (grown == nullptr) throw std::bad_alloc();
  begin_ = grown;
  end_ = reserved_ = grown + size;
}

void AKStreamMemory::Free() {
  std::free(begin_);
  begin_ = end_ = reserved_ = nullptr;
}

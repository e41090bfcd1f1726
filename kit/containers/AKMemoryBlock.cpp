#include "kit/containers/AKMemoryBlock.h"

void AKMemoryBlock::Allocate(unsigned int size, bool zero) {
  if (size == 0) {
    Free();
    return;
  }
  bytes_.Resize(size);
  if (zero) Zeroset();
}

void AKMemoryBlock::Zeroset() {
  if (!IsEmpty()) std::memset(bytes_.Writable(), 0, Size());
}

// Arrays, maps, blocks of bytes, and the order of bytes.
#include <cstdio>

#include "kit/containers/AKMemoryBlock.h"
#include "kit/containers/AKStreamMemory.h"
#include "kit/containers/AKSwapNumber.h"
#include "kit/containers/ATArray.h"
#include "kit/containers/ATFastMap.h"
#include "kit/containers/ATNumberArray.h"
#include "kit/text/AKString.h"

int main() {
  ATArray<AKString> names{"b", "a"};
  names.Append("c");
  for (const AKString& name : names) std::printf("%s ", name.CStr());
  std::printf("of %u\n", names.Count());  // prints: b a c of 3

  // An array of plain numbers; its second argument says what they are made of.
  ATNumberArray<float, float> widths(3);
  widths[1] = 0.5F;
  std::printf("%g %g\n", widths[0], widths[1]);  // prints: 0 0.5

  // A map in the order of its keys.
  ATFastMap<AKString, int> sizes;
  sizes["wide"] = 400;
  sizes["high"] = 300;
  for (const auto& [key, size] : sizes) std::printf("%s=%d ", key.CStr(), size);
  std::printf("%d\n", sizes.Find("deep") == nullptr);  // prints: high=300 wide=400 1

  // Copies of a block share its bytes until one is written to.
  AKMemoryBlock block("\x01\x02\x03", 3);
  const AKMemoryBlock kept = block;
  block.MutableData()[0] = 9;
  std::printf("%d %d\n", block.Data()[0], kept.Data()[0]);  // prints: 9 1

  // The room behind a memory stream: it moves when it grows, and keeps its bytes.
  AKStreamMemory memory;
  memory.Grow(16);
  memory.data()[0] = 7;
  memory.Grow(1 << 20);
  std::printf("%d, enough: %d\n", memory.data()[0], memory.size() >= 1 << 20);  // prints: 7, enough: 1

  std::printf("%08X\n", AKSwapNumber32_EndianBigFromHost(0x11223344));  // prints: 44332211
}

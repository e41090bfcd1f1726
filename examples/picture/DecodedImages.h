// The pixels of the pictures that were drawn last.
//
// A picture holds the bytes of a file, which are few; what it shows are many more. They are decoded when a picture is
// drawn first, and those that were not drawn for longest go once all together are more than kBudget.
#pragma once

#include <list>
#include <unordered_map>

#include "graphics/images/AGImage.h"
#include "kit/containers/AKMemoryBlock.h"

class DecodedImages {
 public:
  /// Bytes of pixels that are kept: 4 a pixel. One image may have more, and is alone then.
  static constexpr unsigned long long kBudget = 256ULL << 20;

  static DecodedImages& Shared();

  /// The image of the owner's bytes, empty where they are none; valid until the next call.
  const AGImage& Get(const void* owner, const AKMemoryBlock& bytes);
  /// The owner has other bytes now, or is gone.
  void Forget(const void* owner);

 private:
  struct Entry {
    const void* owner;
    AGImage image;  // an empty one is kept too: damaged bytes are not read again for each picture
  };

  static unsigned long long BytesOf(const Entry& entry);

  std::list<Entry> entries_;  // the last drawn first
  std::unordered_map<const void*, std::list<Entry>::iterator> places_;
  unsigned long long bytes_ = 0;  // of all entries
};

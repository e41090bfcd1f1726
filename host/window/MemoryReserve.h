// Memory that is kept aside, so that what was begun can be finished when there is none left: an edit that ends in its
// middle would leave a document of which its undo steps know only a part.
#pragma once

#include <functional>

namespace host {

class MemoryReserve {
 public:
  /// From now on an allocation of C++ that fails takes from the reserve, and `used` is called soon after, from the main
  /// loop. What is larger than the reserve ends in std::bad_alloc, and so does what comes before it was filled again.
  static void Keep(std::function<void()> used);
  /// Nothing happens when there is still no memory for it.
  static void Fill();
};

}  // namespace host

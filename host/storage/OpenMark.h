// Says that a document is open: to the other programs of this user that have it open, or open it later.
//
// A mark is a lock on an empty file in "objecthost/open" of the user's data folder, named after the document's path.
// The lock goes with its program, however that ends, so that nothing stale is left to be in the way; and it only says
// something: nobody is kept from the document.
#pragma once

#include <string>

namespace host {

class OpenMark {
 public:
  /// Marks the file of a path; no mark for an empty one.
  explicit OpenMark(const std::string& path);
  OpenMark(const OpenMark&) = delete;
  OpenMark& operator=(const OpenMark&) = delete;
  ~OpenMark();

  /// True when the document was open already, in another program or under another mark of this one. False also when
  /// that can't be found out.
  bool WasOpen() const { return wasOpen_; }

 private:
  std::string file_;
  int descriptor_ = -1;
  bool wasOpen_ = false;
};

}  // namespace host

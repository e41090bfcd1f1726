#include "torture/Call.h"

#include "torture/Entries.h"
#include "torture/Report.h"

namespace torture {

bool Call::Begin() {
  isKept_ = IsCallable(entry_);
  if (isKept_) Report::The().Begin(entry_, done_);
  return isKept_;
}

void Call::End() const { Report::The().End(); }

void Call::GaveUp() {
  End();
  isKept_ = false;
}

void Call::Threw(const char* what) {
  End();
  Find("no exception: failures are statuses", std::string("an exception: ") + what);
  isKept_ = false;
}

void Call::Find(std::string_view expected, const std::string& seen) const {
  Report::The().Add({std::string(entry_), Moment::Where(), done_, std::string(expected), seen, std::string(section_)});
}

}  // namespace torture

// How a session tells its observers, shared by its source files.
#pragma once

#include "host/session/DocumentSession.h"

namespace host {

// An observer may remove itself, or another one, meanwhile.
template <typename Call>
void DocumentSession::Notify(Call call) const {
  for (std::size_t i = observers_.size(); i > 0; --i) {
    if (i <= observers_.size()) call(*observers_[i - 1]);
  }
}

}  // namespace host

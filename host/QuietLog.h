// Keeps log lines back while the host does something whose failure it tells in words of its own.
#pragma once

#include "host/Host.h"

namespace host {

class QuietLog {
 public:
  QuietLog() { ++Host::Instance().quietCount; }
  QuietLog(QuietLog const&) = delete;
  QuietLog& operator=(QuietLog const&) = delete;
  ~QuietLog() { --Host::Instance().quietCount; }
};

}  // namespace host

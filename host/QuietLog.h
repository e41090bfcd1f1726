// Keeps log lines back while the host does something whose failure it tells in words of its own.
#pragma once

#include "host/Host.h"

namespace host {

class QuietLog {
 public:
  QuietLog() { ++Host::Instance().quietCount; }
  QuietLog(const QuietLog&) = delete;
  QuietLog& operator=(const QuietLog&) = delete;
  ~QuietLog() { --Host::Instance().quietCount; }
};

}  // namespace host

#include "host/terminal/Output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace host {
namespace {

std::FILE* sStream = nullptr;  // null before TakeOver
int sError = 0;                // of the first write that failed

std::FILE* Stream() { return sStream == nullptr ? stdout : sStream; }

void Check(bool done) {
  if (!done && sError == 0) sError = errno;
}

}  // namespace

// A descriptor of its own, which no program that is started gets.
void Output::TakeOver() {
  std::fflush(stdout);
  const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (own < 0) return;
  sStream = fdopen(own, "w");
  if (sStream == nullptr) {
    close(own);
  } else {
    dup2(STDERR_FILENO, STDOUT_FILENO);
  }
}

void Output::Write(const std::string& text) {
  Check(std::fwrite(text.data(), 1, text.size(), Stream()) == text.size());
}

void Output::Print(const char* format, ...) {
  va_list list;
  va_start(list, format);
  Check(std::vfprintf(Stream(), format, list) >= 0);
  va_end(list);
}

void Output::Flush() { Check(std::fflush(Stream()) == 0); }

int Output::Finish() {
  Flush();
  return sError;
}

int Output::Descriptor() { return fileno(Stream()); }

}  // namespace host

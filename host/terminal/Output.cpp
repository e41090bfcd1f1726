#include "host/terminal/Output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace host {
namespace {

constexpr std::size_t kMostKept = 65536;

int sDescriptor = STDOUT_FILENO;
int sError = 0;  // of the first write that failed
std::string sKept;

}  // namespace

// A descriptor of its own, which no program that is started gets.
void Output::TakeOver() {
  std::fflush(stdout);
  const int own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  if (own < 0) return;
  sDescriptor = own;
  dup2(STDERR_FILENO, STDOUT_FILENO);
}

void Output::Write(const std::string& text) {
  static const bool isTerminal = isatty(sDescriptor) != 0;
  sKept += text;
  if (isTerminal || sKept.size() > kMostKept) Flush();
}

void Output::Print(const char* format, ...) {
  va_list list;
  va_start(list, format);
  va_list again;
  va_copy(again, list);
  const int length = std::vsnprintf(nullptr, 0, format, list);
  std::string text(length < 0 ? 0 : static_cast<std::size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, again);
  va_end(again);
  va_end(list);
  Write(text);
}

void Output::Flush() {
  for (std::size_t done = 0; done < sKept.size() && sError == 0;) {
    const ssize_t put = write(sDescriptor, sKept.data() + done, sKept.size() - done);
    if (put >= 0) {
      done += static_cast<std::size_t>(put);
    } else if (errno != EINTR) {
      sError = errno;
    }
  }
  sKept.clear();
}

int Output::Finish() {
  Flush();
  return sError;
}

int Output::Descriptor() { return sDescriptor; }

}  // namespace host

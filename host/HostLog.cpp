#include "host/HostLog.h"

#include <dlfcn.h>

#include <cstdio>
#include <string_view>

#include "host/text/Printable.h"

namespace host {
namespace {

// The name of the library that has the address; empty for the program itself.
std::string LibraryOf(const void* address) {
  Dl_info own{};
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&LibraryOf), &own) == 0 || dladdr(address, &info) == 0 ||
      info.dli_fbase == own.dli_fbase || info.dli_fname == nullptr) {
    return "";
  }
  const std::string_view path = info.dli_fname;
  return std::string(path.substr(path.rfind('/') + 1));
}

}  // namespace

HostLog& HostLog::Instance() {
  static HostLog log;
  return log;
}

void HostLog::Take(const char* line, const void* caller) {
  const std::string library = LibraryOf(caller);
  if (library.empty() && quietCount_ != 0) return;
  std::string text = line;
  while (text.ends_with('\n')) text.pop_back();
  text = Printable(text);
  if (!library.empty()) text.insert(0, library + ": ");
  if (sink) {
    sink(text);
  } else {
    std::fprintf(stderr, "%s%s\n", library.empty() ? "" : "objecthost: ", text.c_str());
  }
}

}  // namespace host

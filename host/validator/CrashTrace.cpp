#include "host/validator/CrashTrace.h"

#include <execinfo.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <map>
#include <sstream>

#include "host/validator/ElfFile.h"

namespace host::validator {
namespace {

constexpr int kMostFrames = 64;
constexpr std::size_t kMostShown = 16;

int sDescriptor = -1;
char sStack[64 * 1024];

// Two frames are the handler's and the system's.
void OnCrash(int signal) {
  void* frames[kMostFrames];
  const int count = backtrace(frames, kMostFrames);
  if (count > 2) backtrace_symbols_fd(frames + 2, count - 2, sDescriptor);
  raise(signal);  // the handler was taken off as it was called
}

// Of "/folder/Star.so(name+0x1c2f)[0x7f00]" or "/folder/Star.so(+0x1c2f) [0x7f00]".
struct Frame {
  std::string file;
  std::string symbol;
  std::string offset;
};

bool Parse(const std::string& line, Frame* frame) {
  const std::size_t open = line.find('(');
  const std::size_t close = line.find(')', open);
  if (open == std::string::npos || close == std::string::npos) return false;
  const std::string place = line.substr(open + 1, close - open - 1);
  const std::size_t plus = place.find('+');
  *frame = {line.substr(0, open), place.substr(0, plus), plus == std::string::npos ? "" : place.substr(plus + 1)};
  return true;
}

}  // namespace

void WriteCallsOnCrash(int descriptor) {
  sDescriptor = descriptor;
  void* frame = nullptr;
  backtrace(&frame, 1);  // the first call loads a library, which a handler must not
  stack_t stack{};
  stack.ss_sp = sStack;
  stack.ss_size = sizeof(sStack);
  sigaltstack(&stack, nullptr);
  struct sigaction action {};
  action.sa_handler = &OnCrash;
  action.sa_flags = SA_ONSTACK | static_cast<int>(SA_RESETHAND) | SA_NODEFER;
  for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS}) {
    sigaction(signal, &action, nullptr);
  }
}

std::vector<std::string> NamedCalls(const std::string& written) {
  std::vector<std::string> calls;
  std::map<std::string, ElfFile> files;
  std::istringstream stream(written);
  for (std::string line; calls.size() < kMostShown && std::getline(stream, line);) {
    Frame frame;
    if (!Parse(line, &frame)) continue;
    if (!files.contains(frame.file)) {
      auto read = ElfFile::Read(frame.file);
      files[frame.file] = read ? std::move(*read) : ElfFile();
    }
    std::string name = frame.symbol;
    if (name.empty() && !frame.offset.empty()) {
      name = FunctionAt(files[frame.file], std::strtoull(frame.offset.c_str(), nullptr, 16));
    }
    if (name.find("host::validator::") != std::string::npos) break;
    const std::string file = frame.file.substr(frame.file.rfind('/') + 1);
    calls.push_back((name.empty() ? "?" : name) + "  in " + file + "+" + frame.offset);
  }
  return calls;
}

}  // namespace host::validator

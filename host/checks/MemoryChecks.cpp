// What valgrind has to say, where it is installed.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>

#include "host/Program.h"
#include "host/validator/Heap.h"

namespace host::validator {
namespace {

constexpr int kReportFile = 3;    // of the process that tries a bundle
constexpr int kFindingsFile = 9;  // of valgrind

std::string FindProgram(const char* name) {
  const std::string list = std::getenv("PATH") == nullptr ? "" : std::getenv("PATH");
  for (std::size_t begin = 0; begin < list.size();) {
    const std::size_t end = std::min(list.find(':', begin), list.size());
    std::string path = list.substr(begin, end - begin) + "/" + name;
    if (access(path.c_str(), X_OK) == 0) return path;
    begin = end + 1;
  }
  return "";
}

// Runs it in place of this process. The limit of memory is for the bundle alone, not for a machine around it.
[[noreturn]] void Become(const std::string& valgrind, const std::string& bundle, int findings) {
  rlimit memory{};
  getrlimit(RLIMIT_AS, &memory);
  memory.rlim_cur = memory.rlim_max;
  setrlimit(RLIMIT_AS, &memory);
  dup2(findings, kFindingsFile);
  dup2(open("/dev/null", O_WRONLY), kReportFile);
  const std::string program = Program::ExecutablePath();
  execl(valgrind.c_str(), valgrind.c_str(), "-q", "--xml=yes", "--xml-fd=9", program.c_str(), "--probe", bundle.c_str(),
        static_cast<char*>(nullptr));
  _exit(127);
}

std::string ContentOf(int file) {
  std::string text(static_cast<std::size_t>(std::max<off_t>(0, lseek(file, 0, SEEK_END))), '\0');
  const ssize_t got = pread(file, text.data(), text.size(), 0);
  text.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
  return text;
}

// What stands between "<name>" and "</name>" from `*from` on, which is moved behind it; empty at the end.
std::string Next(const std::string& xml, const std::string& name, std::size_t* from) {
  const std::string open = "<" + name + ">";
  const std::size_t begin = xml.find(open, *from);
  const std::size_t end = xml.find("</" + name + ">", begin);
  if (begin == std::string::npos || end == std::string::npos) {
    *from = xml.size();
    return "";
  }
  *from = end;
  return xml.substr(begin + open.size(), end - begin - open.size());
}

std::string Unescaped(std::string text) {
  for (const auto& [escape, letter] : {std::pair("&lt;", "<"), std::pair("&gt;", ">"), std::pair("&amp;", "&")}) {
    for (std::size_t at = text.find(escape); at != std::string::npos; at = text.find(escape, at + 1)) {
      text.replace(at, std::strlen(escape), letter);
    }
  }
  return text;
}

std::string First(const std::string& xml, const std::string& name) {
  std::size_t from = 0;
  return Next(xml, name, &from);
}

// The first error in whose calls the bundle stands, in words; empty when there is none. Errors of the host's libraries
// alone are not the bundle's.
std::string ErrorOf(const std::string& xml, const std::string& file) {
  std::size_t from = 0;
  for (std::string error = Next(xml, "error", &from); !error.empty(); error = Next(xml, "error", &from)) {
    const std::string stack = First(error, "stack");
    if (stack.find(file + "</obj>") == std::string::npos) continue;
    std::string words = First(error, "what") + First(First(error, "xwhat"), "text");
    std::size_t frameFrom = 0;
    for (int i = 0; i < 6; ++i) {
      const std::string frame = Next(stack, "frame", &frameFrom);
      if (frame.empty()) break;
      words += "\n" + First(frame, "fn");
      if (const std::string line = First(frame, "line"); !line.empty())
        words += "  " + First(frame, "file") + ":" + line;
    }
    return Unescaped(words);
  }
  return "";
}

void Valgrind(Trial& trial) {
  const std::string valgrind = FindProgram("valgrind");
  if (valgrind.empty()) trial.Skip("valgrind is not installed");
  if (HasSanitizer()) trial.Skip("a sanitizer does not run in valgrind");
  trial.Do("make, draw, write and read an object of each class under valgrind, and fill its panel");
  const int findings = memfd_create("findings", 0);
  const pid_t process = fork();
  if (process == 0) Become(valgrind, trial.Bundle(), findings);
  int status = 0;
  if (process < 0 || waitpid(process, &status, 0) != process) trial.Skip("no process can be started");
  const std::string xml = ContentOf(findings);
  if (xml.find("</valgrindoutput>") == std::string::npos) trial.Skip("valgrind does not run here");
  const std::string name = std::filesystem::weakly_canonical(trial.Bundle()).filename().string();
  std::string error = ErrorOf(xml, name);
  if (error.empty()) error = ErrorOf(xml, std::filesystem::path(trial.Bundle()).filename().string());
  trial.Expect(error.empty(), "no error of memory in the bundle", error);
}

}  // namespace

std::vector<Check> MemoryChecks() {
  return {{"memory-valgrind", "valgrind, where it is installed, finds no error of memory in the bundle's calls.", 8,
           &Valgrind}};
}

}  // namespace host::validator

// Scripts, as files and as lines. The reader's lines are those of the C++ library; words that were put into quotes are
// split into the same words again.
#include <sys/mman.h>
#include <unistd.h>

#include <sstream>

#include "fuzz/HostFuzz.h"
#include "host/scripts/ScriptLine.h"
#include "host/scripts/ScriptReader.h"

namespace {

std::string Quoted(const std::string& word, bool single) {
  if (single && word.find('\'') == std::string::npos) return "'" + word + "'";
  std::string quoted = "\"";
  for (const char letter : word) {
    if (letter == '"' || letter == '\\') quoted += '\\';
    quoted += letter;
  }
  return quoted + "\"";
}

void CheckLine(const std::string& line) {
  std::vector<std::string> words;
  std::vector<std::string> again;
  if (!host::SplitScriptLine(line, &words)) return;
  std::string joined;
  for (const std::string& word : words) joined += Quoted(word, joined.size() % 2 != 0) + " \t";
  host_fuzz::Require(host::SplitScriptLine(joined + "# and no more", &again) && again == words);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const int file = memfd_create("script", MFD_CLOEXEC);
  host_fuzz::Require(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size) && lseek(file, 0, 0) == 0);
  host::ScriptReader reader(file, {[] { return std::chrono::duration<double>::max(); }, [] {}});
  std::istringstream expected(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  for (std::string other; std::getline(expected, other);) {
    host_fuzz::Require(reader.Next(&line) && line == other);
    CheckLine(line);
  }
  host_fuzz::Require(!reader.Next(&line) && reader.Error() == 0);
  close(file);
  return 0;
}

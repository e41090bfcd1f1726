// Command lines, by the commands that edit: each line of the input is one, as in scripts. A command that fails leaves
// the document as it was; at the end everything is undone, and the document is what it was at the beginning.
#include <algorithm>
#include <sstream>

#include "fuzz/HostFuzz.h"
#include "host/commands/EditCommand.h"
#include "host/scripts/ScriptLine.h"

namespace {

constexpr std::size_t kMostLines = 4;
constexpr std::size_t kMostObjects = 40;  // each "duplicate all" makes twice as many
constexpr const char* kFileOptions[] = {"to", "from"};

// What reads or writes files, or leaves the document, is not for this.
bool IsAllowed(const std::vector<std::string>& words) {
  static const std::vector<std::string> files = {"new", "open", "save", "close", "draw", "export"};
  if (std::find(files.begin(), files.end(), words[0]) != files.end()) return false;
  return std::none_of(words.begin(), words.end(), [](const std::string& word) {
    return std::any_of(std::begin(kFileOptions), std::end(kFileOptions),
                       [&word](const char* option) { return word.ends_with(option); });
  });
}

void RunLine(const std::string& line, host::EditContext& context) {
  std::vector<std::string> words;
  if (!host::SplitScriptLine(line, &words) || words.empty() || !IsAllowed(words)) return;
  const host::EditCommand* command = host::FindEditCommand(words[0]);
  if (command == nullptr) return;
  const std::string before = host_fuzz::Bytes(context.Doc());
  words.erase(words.begin());
  const auto done = host::RunInContext(*command, context, words);
  if (done) return;
  host_fuzz::Require(host_fuzz::Bytes(context.Doc()) == before);
  host_fuzz::Require(done.Why().English().find('\n') == std::string::npos || line.find('\n') != std::string::npos);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  host_fuzz::Start();
  host::EditContext context;
  context.session = host_fuzz::MakeSession(2);
  context.inScript = true;
  const std::string before = host_fuzz::Bytes(context.Doc());
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::size_t count = 0;
  for (std::string line; count < kMostLines && std::getline(lines, line); ++count) {
    if (context.Doc().ObjectCount() > kMostObjects || context.Doc().Layers().size() > kMostObjects) break;
    RunLine(line, context);
  }
  host::SessionSteps& steps = context.session->Steps();
  while (steps.IsOpen()) steps.Cancel();
  const std::string after = host_fuzz::Bytes(context.Doc());
  const std::size_t position = steps.Known().Position();
  steps.GoTo(0);
  host_fuzz::Require(host_fuzz::Bytes(context.Doc()) == before);
  steps.GoTo(position);
  host_fuzz::Require(host_fuzz::Bytes(context.Doc()) == after);
  return 0;
}

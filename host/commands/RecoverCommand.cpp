// What crashes left unsaved.
#include <cstdio>
#include <ctime>

#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/listings/JsonWriter.h"
#include "host/storage/DocumentFile.h"
#include "host/storage/FolderLock.h"
#include "host/storage/Recovery.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"

namespace host {
namespace {

std::string TimeText(std::int64_t time) {
  const std::time_t seconds = time;
  std::tm parts{};
  char text[40] = "";
  if (localtime_r(&seconds, &parts) != nullptr) std::strftime(text, sizeof(text), "%Y-%m-%d %H:%M:%S", &parts);
  return text;
}

void PrintList(const std::vector<RecoveryFile>& found, bool isWhole) {
  if (found.empty() && isWhole) Output::Print("nothing is to be recovered\n");
  for (std::size_t i = 0; i < found.size(); ++i) {
    const std::string& original = found[i].original;
    Output::Print("%zu  %s  %s\n", i, TimeText(found[i].time).c_str(),
                  original.empty() ? "(never saved)" : Printable(original).c_str());
  }
}

void PrintJson(const std::vector<RecoveryFile>& found) {
  JsonWriter json;
  json.BeginArray();
  for (const RecoveryFile& recovery : found) {
    json.BeginObject();
    json.String("original", recovery.original);
    json.String("file", recovery.file);
    json.Integer("time", recovery.time);
    json.EndObject();
  }
  json.EndArray();
  Output::Write(json.Line());
}

int Discard(const RecoveryFile& recovery) {
  const auto done = DiscardRecovery(recovery);
  return done ? 0 : Fail(done.Why());
}

int RecoverInto(const RecoveryFile& recovery, const std::string& path) {
  const auto session = OpenRecovery(recovery);
  if (!session) return Fail(session.Why());
  // A new file lets in whom the document did; one that is there already keeps what it has.
  const std::optional<std::string> model = FileStamp::Of(path).exists ? std::nullopt : std::optional(recovery.file);
  const FolderLock lock(path);
  if (const auto done = WriteDocument((*session)->Doc(), path, model); !done) return Fail(done.Why());
  return Discard(recovery);
}

int RunRecover(const std::vector<std::string>& words) {
  CommandLine line({"to"}, {"discard", "json"});
  if (const auto done = line.Parse(words, 0, 1); !done) return Fail(done.Why());
  std::vector<Problem> unreadable;
  const std::vector<RecoveryFile> found = FindRecoveries(&unreadable);
  if (line.Positional().empty()) line.Has("json") ? PrintJson(found) : PrintList(found, unreadable.empty());
  // Numbers count what can be read: without one file they would be those of others.
  if (!unreadable.empty()) return Fail(unreadable[0]);
  if (line.Positional().empty()) return 0;
  std::size_t number = 0;
  const std::string& text = line.Positional()[0];
  if (!ParseIndex(text, &number) || number >= found.size()) return Fail("there is no recovery file " + text);
  if (line.Has("to")) return RecoverInto(found[number], line.Value("to", ""));
  if (!line.Has("discard")) return Fail("--to has to name the file to recover into, or --discard be given");
  return Discard(found[number]);
}

}  // namespace

const Command kRecoverCommand = {
    "recover", "get back what a crash left unsaved",
    "usage: objecthost recover [--json]\n"
    "       objecthost recover NUMBER --to FILE\n"
    "       objecthost recover NUMBER --discard\n\n"
    "Lists the documents with unsaved changes that programs left which ended without closing them, the\n"
    "newest first; saves one of them into a file, or forgets it.\n",
    &RunRecover};

}  // namespace host

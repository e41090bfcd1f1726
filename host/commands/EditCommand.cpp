#include "host/commands/EditCommand.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <sstream>

#include "host/storage/DocumentFile.h"
#include "host/terminal/Output.h"

namespace host {
namespace {

std::vector<std::string> Split(const char* words) {
  std::istringstream stream(words);
  std::vector<std::string> split;
  for (std::string word; stream >> word;) split.push_back(word);
  return split;
}

CommandLine LineOf(const EditCommand& command) {
  std::vector<std::string> flags = Split(command.flagOptions);
  flags.emplace_back("strict");
  return {Split(command.valueOptions), std::move(flags)};
}

Result<> AddNumber(const EditContext& context, const std::string& text, std::size_t* number) {
  if (!ParseIndex(text, number)) {
    return Problem(N_("\"%s\" is no object number"), {text});
  }
  const std::size_t count = context.Doc().ObjectCount();
  if (*number < count) return {};
  return Problem(N_("%s has no object %s; it has %s"), {context.Name(), text, std::to_string(count)});
}

// "g0".
Result<> AddGroup(const EditContext& context, const std::string& text, ObjectIDs* ids) {
  std::size_t number = 0;
  const std::vector<GroupID> groups = context.Doc().GroupsInOrder();
  if (!ParseIndex(text.substr(1), &number) || number >= groups.size()) {
    return Problem(N_("%s has no group \"%s\"; it has %s"), {context.Name(), text, std::to_string(groups.size())});
  }
  const std::set<ObjectID>& members = context.Doc().Groups().Members(groups[number]);
  const ObjectIDs ordered = InDrawingOrder(context.Doc(), {members.begin(), members.end()});
  ids->insert(ids->end(), ordered.begin(), ordered.end());
  return {};
}

// "3" or "4-6".
Result<> AddRange(const EditContext& context, const std::string& text, ObjectIDs* ids) {
  if (text.starts_with('g')) return AddGroup(context, text, ids);
  const std::size_t dash = text.find('-', 1);
  std::size_t first = 0;
  std::size_t last = 0;
  if (const auto done = AddNumber(context, text.substr(0, dash), &first); !done) return done.Why();
  last = first;
  if (dash != std::string::npos) {
    if (const auto done = AddNumber(context, text.substr(dash + 1), &last); !done) return done.Why();
  }
  if (last < first) {
    return Problem(N_("\"%s\" runs backwards"), {text});
  }
  for (std::size_t number = first; number <= last; ++number) ids->push_back(context.Doc().ObjectAt(number).id);
  return {};
}

}  // namespace

Problem::Part EditContext::Name() const {
  return session->File().Path().empty() ? Problem::Part(N_("the document"))
                                        : Problem::Part("\"" + session->File().Path() + "\"");
}

void EditContext::SetSession(std::unique_ptr<DocumentSession> next) {
  recovery.reset();
  session = std::move(next);
  if (inScript && session) recovery = std::make_unique<Recovery>(*session, autosaveSeconds);
}

const std::vector<const EditCommand*>& EditCommands() {
  static const std::vector<const EditCommand*> commands = {
      &kNewEdit,        &kOpenEdit,    &kSaveEdit,    &kCloseEdit,   &kAddEdit,       &kListEdit,   &kGetEdit,
      &kSetEdit,        &kStyleEdit,   &kDeleteEdit,  &kMoveEdit,    &kResizeEdit,    &kRotateEdit, &kAlignEdit,
      &kDistributeEdit, &kMatchEdit,   &kRepeatEdit,  &kOrderEdit,   &kDuplicateEdit, &kCopyEdit,   &kCutEdit,
      &kPasteEdit,      &kSelectEdit,  &kGroupEdit,   &kUngroupEdit, &kLockEdit,      &kUnlockEdit, &kHideEdit,
      &kShowEdit,       &kLayersEdit,  &kLayerEdit,   &kPageEdit,    &kDrawEdit,      &kExportEdit, &kThumbnailEdit,
      &kImportEdit,     &kOpacityEdit, &kFlipEdit,    &kDashEdit,    &kLabelEdit,     &kGuideEdit,  &kInspectEdit,
      &kUndoEdit,       &kRedoEdit,    &kHistoryEdit, &kBeginEdit,   &kEndEdit,       &kCancelEdit,
  };
  return commands;
}

const EditCommand* FindEditCommand(const std::string& name) {
  for (const EditCommand* command : EditCommands()) {
    if (name == command->name) return command;
  }
  return nullptr;
}

Result<std::unique_ptr<DocumentSession>> OpenSession(const std::string& path, bool strict) {
  auto session = DocumentSession::Open(path);
  if (!session) return session.Why();
  for (const Problem& problem : UnreadObjects((*session)->Doc())) {
    if (strict) return Problem(N_("\"%s\": %s"), {path, problem});
    Warn("\"" + path + "\": " + problem.English());
  }
  return session;
}

Result<> RunInContext(const EditCommand& command, EditContext& context, const std::vector<std::string>& words) {
  if (!context.session && command.use != EditUse::kWithoutDocument) {
    return Problem(N_("no document is open: \"open FILE\" or \"new\" comes first"));
  }
  CommandLine line = LineOf(command);
  if (const auto done = line.Parse(words, command.least, command.most); !done) return done.Why();
  context.output.clear();
  return command.run(context, {line, line.Positional()});
}

int RunOnFile(const EditCommand& command, const std::vector<std::string>& words) {
  CommandLine line = LineOf(command);
  EditContext context;
  if (const auto done = line.Parse(words, command.least + 1, command.most + 1); !done) return Fail(done.Why());
  const std::vector<std::string>& all = line.Positional();
  auto session = OpenSession(all[0], line.Has("strict"));
  if (!session) return Fail(session.Why());
  context.session = std::move(*session);
  const EditArguments arguments{line, {all.begin() + 1, all.end()}};
  if (const auto done = command.run(context, arguments); !done) return Fail(done.Why());
  if (context.session->File().HasUnsavedChanges()) {
    if (const auto done = context.session->File().Save(false); !done) return Fail(done.Why());
  }
  Output::Write(context.output);
  return 0;
}

Result<> ParseObjects(const EditContext& context, const std::string& text, ObjectIDs* ids) {
  ids->clear();
  if (text == "selected") {
    *ids = context.session->Selection().IDs();
    return {};
  }
  if (text == "all") {
    context.Doc().ForEachObject([&](const DocumentObject& object) {
      if (context.session->Selection().IsEditable(object.id)) ids->push_back(object.id);
    });
    return {};
  }
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    if (const auto done = AddRange(context, text.substr(start, end - start), ids); !done) return done.Why();
    start = end + 1;
  }
  std::set<ObjectID> seen;
  std::erase_if(*ids, [&seen](ObjectID id) { return !seen.insert(id).second; });
  return {};
}

Result<> ParseObject(const EditContext& context, const std::string& text, ObjectID* id) {
  std::size_t number = 0;
  if (const auto done = AddNumber(context, text, &number); !done) return done.Why();
  *id = context.Doc().ObjectAt(number).id;
  return {};
}

Result<> ParseLayer(const EditContext& context, const std::string& text, LayerID* id) {
  const auto& layers = context.Doc().Layers();
  std::size_t number = 0;
  if (ParseIndex(text, &number) && number < layers.size()) {
    *id = layers[number]->id;
    return {};
  }
  for (const auto& layer : layers) {
    if (layer->settings.name != text) continue;
    *id = layer->id;
    return {};
  }
  return Problem(N_("%s has no layer \"%s\""), {context.Name(), text});
}

Result<> ParseWanted(const EditContext& context, const EditArguments& arguments, Wanted* wanted) {
  if (arguments.Has("class")) wanted->classID = AKClassID(arguments.Value("class", "").c_str());
  wanted->name = arguments.Value("name", "");
  wanted->text = arguments.Value("text", "");
  if (arguments.Has("layer")) {
    LayerID layer{};
    if (const auto done = ParseLayer(context, arguments.Value("layer", ""), &layer); !done) return done.Why();
    wanted->layer = layer;
  }
  const std::pair<const char*, std::optional<WantedPaint>*> paints[] = {{"fill", &wanted->fill},
                                                                        {"stroke", &wanted->stroke}};
  for (const auto& [option, paint] : paints) {
    const std::string text = arguments.Value(option, "");
    if (arguments.Has(option)) *paint = ParsePaint(text);
    if (!arguments.Has(option) || *paint) continue;
    return Problem(N_("\"%s\" is no colour: none, a name, #RRGGBB or R,G,B is needed"), {text});
  }
  return {};
}

Result<> ParseAssignments(const std::vector<std::string>& words,
                          std::vector<std::pair<std::string, std::string>>* pairs) {
  for (const std::string& word : words) {
    std::string name;
    std::string value;
    if (!SplitAssignment(word, &name, &value)) {
      return Problem(N_("\"%s\" is not of the form NAME=VALUE"), {word});
    }
    pairs->emplace_back(std::move(name), std::move(value));
  }
  return {};
}

Result<> ParseList(const std::string& text, std::size_t count, Text what, std::vector<double>* numbers) {
  if (ParseLengths(text, count, numbers)) return {};
  return Problem(what);
}

}  // namespace host

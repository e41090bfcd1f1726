#include "host/commands/EditCommand.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

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
  return {Split(command.valueOptions), std::move(flags)};
}

bool AddNumber(const EditContext& context, const std::string& text, std::size_t* number, std::string* error) {
  if (!ParseIndex(text, number)) {
    *error = "\"" + text + "\" is no object number";
    return false;
  }
  const std::size_t count = context.Doc().ObjectCount();
  if (*number < count) return true;
  *error = context.Name() + " has no object " + text + "; it has " + std::to_string(count);
  return false;
}

// "3" or "4-6".
bool AddRange(const EditContext& context, const std::string& text, ObjectIDs* ids, std::string* error) {
  const std::size_t dash = text.find('-', 1);
  std::size_t first = 0;
  std::size_t last = 0;
  if (!AddNumber(context, text.substr(0, dash), &first, error)) return false;
  last = first;
  if (dash != std::string::npos && !AddNumber(context, text.substr(dash + 1), &last, error)) return false;
  if (last < first) {
    *error = "\"" + text + "\" runs backwards";
    return false;
  }
  for (std::size_t number = first; number <= last; ++number) ids->push_back(context.Doc().ObjectAt(number).id);
  return true;
}

}  // namespace

void EditContext::SetSession(std::unique_ptr<DocumentSession> next) {
  recovery.reset();
  session = std::move(next);
  if (inScript && session) recovery = std::make_unique<Recovery>(*session, autosaveSeconds);
}

const std::vector<const EditCommand*>& EditCommands() {
  static const std::vector<const EditCommand*> commands = {
      &kNewEdit,     &kOpenEdit,      &kSaveEdit, &kCloseEdit,  &kAddEdit,     &kListEdit,   &kGetEdit,
      &kSetEdit,     &kDeleteEdit,    &kMoveEdit, &kResizeEdit, &kRotateEdit,  &kAlignEdit,  &kDistributeEdit,
      &kOrderEdit,   &kDuplicateEdit, &kCopyEdit, &kCutEdit,    &kPasteEdit,   &kSelectEdit, &kLayersEdit,
      &kLayerEdit,   &kPageEdit,      &kDrawEdit, &kExportEdit, &kInspectEdit, &kUndoEdit,   &kRedoEdit,
      &kHistoryEdit, &kBeginEdit,     &kEndEdit,  &kCancelEdit,
  };
  return commands;
}

const EditCommand* FindEditCommand(const std::string& name) {
  for (const EditCommand* command : EditCommands()) {
    if (name == command->name) return command;
  }
  return nullptr;
}

bool RunInContext(const EditCommand& command, EditContext& context, const std::vector<std::string>& words,
                  std::string* error) {
  if (!context.session && command.use != EditUse::kWithoutDocument) {
    *error = "no document is open: \"open FILE\" or \"new\" comes first";
    return false;
  }
  CommandLine line = LineOf(command);
  if (!line.Parse(words, command.least, command.most, error)) return false;
  context.output.clear();
  return command.run(context, {line, line.Positional()}, error);
}

int RunOnFile(const EditCommand& command, const std::vector<std::string>& words) {
  CommandLine line = LineOf(command);
  EditContext context;
  std::string error;
  if (!line.Parse(words, command.least + 1, command.most + 1, &error)) return Fail(error);
  const std::vector<std::string>& all = line.Positional();
  context.session = DocumentSession::Open(all[0], &error);
  if (!context.session || !command.run(context, {line, {all.begin() + 1, all.end()}}, &error)) return Fail(error);
  if (context.session->HasUnsavedChanges() && !context.session->Save(false, &error)) return Fail(error);
  std::fputs(context.output.c_str(), stdout);
  return 0;
}

bool ParseObjects(const EditContext& context, const std::string& text, ObjectIDs* ids, std::string* error) {
  ids->clear();
  if (text == "selected") {
    *ids = context.session->Selected().IDs();
    return true;
  }
  if (text == "all") {
    context.Doc().ForEachObject([&](const DocumentObject& object) {
      if (context.session->IsEditable(object.id)) ids->push_back(object.id);
    });
    return true;
  }
  for (std::size_t start = 0; start <= text.size();) {
    const std::size_t end = std::min(text.find(',', start), text.size());
    if (!AddRange(context, text.substr(start, end - start), ids, error)) return false;
    start = end + 1;
  }
  return true;
}

bool ParseObject(const EditContext& context, const std::string& text, ObjectID* id, std::string* error) {
  std::size_t number = 0;
  if (!AddNumber(context, text, &number, error)) return false;
  *id = context.Doc().ObjectAt(number).id;
  return true;
}

bool ParseLayer(const EditContext& context, const std::string& text, LayerID* id, std::string* error) {
  const auto& layers = context.Doc().Layers();
  std::size_t number = 0;
  if (ParseIndex(text, &number) && number < layers.size()) {
    *id = layers[number]->id;
    return true;
  }
  for (const auto& layer : layers) {
    if (layer->settings.name != text) continue;
    *id = layer->id;
    return true;
  }
  *error = context.Name() + " has no layer \"" + text + "\"";
  return false;
}

bool ParseAssignments(const std::vector<std::string>& words, std::vector<std::pair<std::string, std::string>>* pairs,
                      std::string* error) {
  for (const std::string& word : words) {
    std::string name;
    std::string value;
    if (!SplitAssignment(word, &name, &value)) {
      *error = "\"" + word + "\" is not of the form NAME=VALUE";
      return false;
    }
    pairs->emplace_back(std::move(name), std::move(value));
  }
  return true;
}

bool ParseList(const std::string& text, std::size_t count, const char* what, std::vector<double>* numbers,
               std::string* error) {
  if (ParseNumbers(text, count, numbers)) return true;
  *error = what;
  return false;
}

}  // namespace host

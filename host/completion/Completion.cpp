#include "host/completion/Completion.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "host/Host.h"
#include "host/commands/Command.h"
#include "host/commands/EditCommand.h"
#include "host/model/ObjectProperties.h"
#include "host/text/DisplayText.h"
#include "host/text/Printable.h"

namespace host {
namespace {

// Collects the words that begin as the one that is being typed.
class Candidates {
 public:
  explicit Candidates(std::string begun) : begun_(std::move(begun)) {}

  void Add(const std::string& word, const std::string& what = "") {
    if (!word.starts_with(begun_) || !known_.insert(word).second) return;
    lines_ += word + (what.empty() ? "" : "\t" + what) + "\n";
  }
  const std::string& Lines() const { return lines_; }

 private:
  std::string begun_;
  std::set<std::string> known_;
  std::string lines_;
};

bool TakesBundle(const std::string& option) { return option == "--bundle" || option == "--only-bundle"; }

// Where the command stands behind the options of the program; the number of words when it does not.
std::size_t PlaceOfCommand(const std::vector<std::string>& words) {
  std::size_t i = 0;
  while (i < words.size() && words[i].starts_with("-") && words[i] != "--") i += TakesBundle(words[i]) ? 2 : 1;
  return std::min(i < words.size() && words[i] == "--" ? i + 1 : i, words.size());
}

void AddCommands(Candidates* candidates) {
  for (const Command& command : Commands()) candidates->Add(command.name, command.summary);
}

void AddProgramOptions(Candidates* candidates) {
  candidates->Add("--bundle", "load this bundle first");
  candidates->Add("--only-bundle", "load this bundle and look for no others");
  candidates->Add("--no-bundles", "load no bundle");
  candidates->Add("--help", "tell what there is");
  candidates->Add("--version", "print the version");
}

struct Option {
  std::string name;
  bool takesValue;
};

// Whether a text begins with capitals and digits, such as N or X0: the first of a sentence goes on in small letters.
bool IsValueName(const char* text) {
  return text[0] >= 'A' && text[0] <= 'Z' && !(text[1] >= 'a' && text[1] <= 'z') && text[1] != '\0';
}

// The options that a command's help speaks of; behind those with a value stands what it is, in capitals.
std::vector<Option> OptionsOf(const char* help) {
  std::vector<Option> options;
  for (const char* at = help; (at = std::strstr(at, "--")) != nullptr;) {
    const std::size_t length = 2 + std::strspn(at + 2, "abcdefghijklmnopqrstuvwxyz-");
    if (length > 2) options.push_back({std::string(at, length), at[length] == ' ' && IsValueName(at + length + 1)});
    at += length;
  }
  return options;
}

bool TakesValue(const std::vector<Option>& options, const std::string& word) {
  return std::any_of(options.begin(), options.end(),
                     [&](const Option& option) { return option.takesValue && option.name == word; });
}

void AddOptions(const Command& command, const std::vector<Option>& options, Candidates* candidates) {
  for (const Option& option : options) candidates->Add(option.name);
  if (FindEditCommand(command.name) != nullptr) candidates->Add("--strict", "an unreadable object is an error");
  candidates->Add("--help", "tell more of the command");
}

void AddClasses(Candidates* candidates) {
  for (const RegisteredClass& entry : Host::Instance().Classes().Classes()) {
    if (entry.fromBundle) candidates->Add(Printable(entry.id.chars), Printable(ClassName(entry.id)));
  }
}

void AddProperties(const AKDictionary& properties, const std::string& front, const char* end, Candidates* candidates) {
  properties.ForEach([&](const AKString& key, const AKValue& value) {
    const std::string name = front + Printable(DisplayText(key));
    if (const AKDictionary* parts = value.GetasAKDictionary(); parts != nullptr && name != "Bounds") {
      AddProperties(*parts, name + ".", end, candidates);
    } else {
      candidates->Add(name + end, Printable(TextOf(value)));
    }
  });
}

void AddPropertiesOfObjects(const std::string& file, const std::string& objects, const char* end,
                            Candidates* candidates) {
  auto session = OpenSession(file, false);
  if (!session) return;
  EditContext context;
  context.SetSession(std::move(*session));
  ObjectIDs ids;
  if (!ParseObjects(context, objects, &ids)) return;
  for (const ObjectID id : ids) AddProperties(PropertiesOf(*context.Doc().Find(id)), "", end, candidates);
}

// Of an object as it is when it has just been made.
void AddPropertiesOfClass(const std::string& classID, Candidates* candidates) {
  DocumentSession session(std::make_unique<Document>(AGSize{100, 100}));
  const auto id = session.Objects().Add(AKClassID(classID.c_str()), "-default", {{0, 0, 100, 100}, 0});
  if (id) AddProperties(PropertiesOf(*session.Doc().Find(*id)), "", "=", candidates);
}

// The words before the last that are neither options nor their values.
std::vector<std::string> Positional(const std::vector<std::string>& words, const std::vector<Option>& options) {
  std::vector<std::string> positional;
  for (std::size_t i = 0; i + 1 < words.size(); ++i) {
    if (TakesValue(options, words[i])) {
      ++i;
    } else if (!words[i].starts_with("--")) {
      positional.push_back(words[i]);
    }
  }
  return positional;
}

// `words` stand behind the command's name.
void AddWords(const Command& command, const std::vector<std::string>& words, Candidates* candidates) {
  const std::vector<Option> options = OptionsOf(command.help);
  const std::string name = command.name;
  const std::string before = words.size() < 2 ? "" : words[words.size() - 2];
  const std::vector<std::string> positional = Positional(words, options);
  if (TakesValue(options, before)) {
    if (name == "add" && before == "--set" && positional.size() >= 2) AddPropertiesOfClass(positional[1], candidates);
  } else if (words.back().starts_with("-")) {
    AddOptions(command, options, candidates);
  } else if (name == "add" && positional.size() == 1) {
    AddClasses(candidates);
  } else if ((name == "set" && positional.size() >= 2) || (name == "get" && positional.size() == 2)) {
    AddPropertiesOfObjects(positional[0], positional[1], name == "set" ? "=" : "", candidates);
  }
}

}  // namespace

std::string Completions(const std::vector<std::string>& words) {
  if (words.empty()) return {};
  Candidates candidates(words.back());
  const std::size_t place = PlaceOfCommand(words);
  const Command* command = place + 1 < words.size() ? FindCommand(words[place]) : nullptr;
  if (command != nullptr) {
    AddWords(*command, {words.begin() + static_cast<std::ptrdiff_t>(place) + 1, words.end()}, &candidates);
  } else if (words.size() > 1 && TakesBundle(words[words.size() - 2])) {
    return {};
  } else if (words.back().starts_with("-")) {
    AddProgramOptions(&candidates);
  } else if (place + 1 == words.size()) {
    AddCommands(&candidates);
  }
  return candidates.Lines();
}

}  // namespace host

// A plug-in author's first step: a project of their own.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "host/Program.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/terminal/Output.h"
#include "host/text/Printable.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestName = 64;
constexpr std::size_t kLongestClassID = 7;
constexpr char kTemplateEnding[] = ".in";

struct Project {
  std::string name;
  std::string classID;
};

bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
bool IsOfIdentifier(char c) { return IsUpper(c) || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_'; }
bool IsIdentifier(const std::string& text) { return std::all_of(text.begin(), text.end(), IsOfIdentifier); }

// Of the kit's types, and of the native layer's below it.
bool IsOfTheKit(const std::string& name) {
  static const char* const prefixes[] = {"AK", "AG", "NK", "CF", "CG", "CT"};
  return name.size() > 2 && IsUpper(name[2]) &&
         std::any_of(std::begin(prefixes), std::end(prefixes),
                     [&name](const char* prefix) { return name.compare(0, 2, prefix) == 0; });
}

Result<> CheckName(const std::string& name) {
  if (name.empty() || !IsUpper(name[0]) || !IsIdentifier(name) || name.size() > kLongestName) {
    return Problem(N_("\"%s\" can't be the name of a class: a capital letter, then letters, digits and _"), {name});
  }
  if (IsOfTheKit(name)) return Problem(N_("\"%s\" is like a name of the kit: choose another beginning"), {name});
  return {};
}

Result<> CheckClassID(const std::string& id) {
  if (id.empty() || id.size() > kLongestClassID || id[0] == '_' || !IsIdentifier(id)) {
    return Problem(N_("\"%s\" can't be a class ID: 1 to 7 letters and digits"), {id});
  }
  return {};
}

// The name with a small first letter, cut.
std::string ClassIDOf(const std::string& name) {
  std::string id = name.substr(0, kLongestClassID);
  id[0] = static_cast<char>(id[0] - 'A' + 'a');
  return id;
}

std::string Filled(std::string text, const Project& project) {
  const std::pair<const char*, const std::string*> places[] = {{"@NAME@", &project.name},
                                                               {"@CLASS_ID@", &project.classID}};
  for (const auto& [place, value] : places) {
    for (std::size_t at = 0; (at = text.find(place, at)) != std::string::npos; at += value->size()) {
      text.replace(at, std::char_traits<char>::length(place), *value);
    }
  }
  return text;
}

// "po/NAME.pot.in" stands for "po/Cross.pot".
fs::path TargetOf(const fs::path& relative, const Project& project) {
  std::string file = relative.filename().string();
  if (file.ends_with(kTemplateEnding)) file.resize(file.size() - (sizeof(kTemplateEnding) - 1));
  if (file.starts_with("NAME.")) file.replace(0, 4, project.name);
  return relative.parent_path() / file;
}

// Throws std::runtime_error with the file's name; what the file system throws says why by itself.
void CopyFilled(const fs::path& from, const fs::path& to, const Project& project) {
  std::ifstream source(from, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(source), {}};
  if (!source) throw std::runtime_error("can't read \"" + from.string() + "\"");
  std::ofstream target(to, std::ios::binary);
  target << Filled(text, project);
  target.close();
  if (!target) throw std::runtime_error("can't write \"" + to.string() + "\"");
}

void MakeFiles(const fs::path& templates, const fs::path& folder, const Project& project) {
  fs::create_directories(folder);
  for (const auto& entry : fs::recursive_directory_iterator(templates)) {
    const fs::path relative = fs::relative(entry.path(), templates);
    if (entry.is_directory()) {
      fs::create_directories(folder / relative);
    } else {
      CopyFilled(entry.path(), folder / TargetOf(relative, project), project);
    }
  }
}

// The folder is there whole or not at all: it is made beside its place. One that is there and empty is replaced.
Result<> MakeProject(const fs::path& templates, const fs::path& folder, const Project& project) {
  const fs::path unfinished = folder.string() + ".new-" + std::to_string(getpid());
  try {
    if (fs::exists(folder) && !(fs::is_directory(folder) && fs::is_empty(folder))) {
      return Problem(N_("\"%s\" is there already and not an empty folder"), {folder.string()});
    }
    MakeFiles(templates, unfinished, project);
    fs::rename(unfinished, folder);
    return {};
  } catch (const std::exception& error) {
    std::error_code ignored;
    fs::remove_all(unfinished, ignored);
    const auto* const system = dynamic_cast<const fs::filesystem_error*>(&error);
    const std::string why = system == nullptr ? error.what() : system->code().message();
    return Problem(N_("\"%s\" was not made: %s"), {folder.string(), why});
  }
}

fs::path Prefix() { return fs::path(Program::ExecutablePath()).parent_path().parent_path(); }

// As a shell takes it for one word, which moves no cursor and is no option.
std::string Quoted(const std::string& path) {
  if (path.starts_with('-')) return Quoted("./" + path);
  const bool plain = std::all_of(path.begin(), path.end(), [](char c) {
    return IsOfIdentifier(c) || c == '/' || c == '.' || c == '-' || c == '+' || static_cast<unsigned char>(c) >= 0x80;
  });
  const bool hasControls = Printable(path) != path;
  if (plain && !hasControls) return path;
  std::string text;
  for (const char c : path) {
    if (c == '\'') text += hasControls ? "\\" : "'\\'";
    if (c == '\\' && hasControls) text += c;
    text += c;
  }
  return hasControls ? "$'" + Printable(text) + "'" : "'" + text + "'";
}

void PrintNextSteps(const fs::path& folder, const Project& project) {
  std::error_code none;
  const fs::path prefix = Prefix();
  const bool hasKit = fs::exists(prefix / "include" / "akkit", none);
  const std::string kit = hasKit ? Quoted(prefix.string()) : "/where/the/kit/is/installed";
  const std::string place = Quoted(folder.string());
  Output::Print(
      "made %s, a bundle with the class %s. Build, validate and draw it with\n\n"
      "  cmake -S %s -B %s/build -DCMAKE_PREFIX_PATH=%s\n"
      "  cmake --build %s/build\n"
      "  objecthost validate %s/build/%s.so\n\n"
      "%s/README.md says what is where.\n",
      place.c_str(), project.classID.c_str(), place.c_str(), place.c_str(), kit.c_str(), place.c_str(), place.c_str(),
      project.name.c_str(), place.c_str());
}

int RunNewPlugin(const std::vector<std::string>& words) {
  CommandLine line({"class"}, {});
  if (const auto done = line.Parse(words, 1, 2); !done) return Fail(done.Why());
  const Project project = {line.Positional()[0], line.Value("class", "")};
  if (const auto done = CheckName(project.name); !done) return Fail(done.Why());
  const Project whole = {project.name, line.Has("class") ? project.classID : ClassIDOf(project.name)};
  if (const auto done = CheckClassID(whole.classID); !done) return Fail(done.Why());

  const fs::path templates = Prefix() / "share" / "akkit" / "templates" / "plugin";
  std::error_code none;
  if (!fs::is_directory(templates, none)) {
    return Fail("the template of plug-ins is not there: \"" + templates.string() + "\"; install the kit again");
  }
  // Without the slash that a shell adds: the unfinished folder stands beside it.
  std::string folder = line.Positional().size() > 1 ? line.Positional()[1] : project.name;
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  if (folder.empty()) return Fail("a folder needs a name");
  if (const auto done = MakeProject(templates, folder, whole); !done) return Fail(done.Why());
  PrintNextSteps(folder, whole);
  return 0;
}

}  // namespace

const Command kNewPluginCommand = {
    "new-plugin", "begin a plug-in bundle of your own",
    "usage: objecthost new-plugin NAME [--class ID] [FOLDER]\n\n"
    "Makes a whole project: a class with one property, its record, drawing and inspector panel, a template\n"
    "for translations, a build that runs \"objecthost validate\" as a test, and a CI file.\n"
    "NAME is the class's name, a capital letter first. ID is what documents know it by, at most 7 letters\n"
    "and digits that no other bundle has; without --class it is made from the name. The project is made\n"
    "in FOLDER, which must not be there or be empty; without it, in a folder of the class's name.\n",
    &RunNewPlugin};

}  // namespace host

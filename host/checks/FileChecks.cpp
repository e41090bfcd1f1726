// What the file says of itself, before anything of it runs.
#include <elf.h>

#include "host/validator/ElfFile.h"
#include "host/validator/Library.h"

namespace host::validator {
namespace {

ElfFile FileOf(Trial& trial) {
  trial.Do("read the file");
  auto file = ElfFile::Read(trial.Bundle());
  if (!file) trial.Fail("a shared library", file.Why().English());
  return std::move(*file);
}

void Entry(Trial& trial) {
  for (const ElfFile::Symbol& symbol : FileOf(trial).exported) {
    if (symbol.name == "pluginMain" && symbol.type == STT_FUNC) return;
  }
  trial.Fail("a function pluginMain among the exported names", "there is none");
}

void Exports(Trial& trial) {
  std::string others;
  for (const ElfFile::Symbol& symbol : FileOf(trial).exported) {
    if (symbol.name == "pluginMain" || symbol.binding == STB_GNU_UNIQUE) continue;
    if (others.size() < 300) others += (others.empty() ? "" : ", ") + symbol.name;
  }
  trial.Expect(others.empty(), "pluginMain is all that is exported", "exported too: " + others);
}

void Unique(Trial& trial) {
  const ElfFile file = FileOf(trial);
  for (const auto* table : {&file.exported, &file.symbols}) {
    for (const ElfFile::Symbol& symbol : *table) {
      trial.Expect(symbol.binding != STB_GNU_UNIQUE, "no unique symbols", "unique: " + symbol.name);
    }
  }
}

void SearchPath(Trial& trial) {
  for (const std::string& path : FileOf(trial).runPath) {
    trial.Expect(path.starts_with("$ORIGIN") || path.starts_with("${ORIGIN}"), "search paths that begin with $ORIGIN",
                 "RPATH or RUNPATH \"" + path + "\"");
  }
}

void Libraries(Trial& trial) {
  for (const std::string& library : FileOf(trial).needed) {
    trial.Expect(library.find('/') == std::string::npos, "libraries needed by name", "needed by path: " + library);
  }
}

void Stack(Trial& trial) {
  const ElfFile file = FileOf(trial);
  trial.Expect(!file.hasExecutableStack, "a stack that is not executable", "the file asks for an executable one");
}

void TextRelocations(Trial& trial) {
  trial.Expect(!FileOf(trial).hasTextRelocations, "code that is not changed as it is loaded", "text relocations");
}

void Resolved(Trial& trial) { const Library library(trial); }

}  // namespace

std::vector<Check> FileChecks() {
  return {
      {"file-entry", "The file exports a function pluginMain, the only way in that a host knows.", 1, &Entry,
       Check::Kind::kNeeded},
      {"file-exports",
       "The file exports nothing but pluginMain, or two bundles could take each other's functions for their own.", 1,
       &Exports},
      {"file-unique", "The file has no unique symbols, which would keep it in memory for ever.", 1, &Unique},
      {"file-search-path", "Libraries are searched beside the file alone, since a user's folders are other ones.", 1,
       &SearchPath},
      {"file-libraries", "Libraries are needed by name, since a path of the author's machine is nowhere else.", 1,
       &Libraries},
      {"file-stack", "The file asks for no executable stack, which systems refuse to load.", 1, &Stack},
      {"file-text-relocations", "The code is position independent, since systems refuse to change code.", 1,
       &TextRelocations},
      {"file-resolved", "The file loads with all its symbols found, so that none is missed in the middle of the work.",
       1, &Resolved, Check::Kind::kNeeded},
  };
}

}  // namespace host::validator

// Commands that work on an open document: each is a line of a script and, with the document's file in front of its
// arguments, a command of its own. Both run the same code: a command of its own opens the file, runs, and saves when
// something changed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/listings/FindObjects.h"
#include "host/session/DocumentSession.h"
#include "host/storage/Recovery.h"
#include "host/text/Problem.h"

namespace host {

/// What a command works on, and what it leaves for the next one of a script.
struct EditContext {
  std::unique_ptr<DocumentSession> session;  ///< null in a script that has not opened a document
  std::unique_ptr<Recovery> recovery;        ///< of the session, in scripts
  bool inScript = false;
  double autosaveSeconds = 0;
  std::string clipboard;
  std::string output;  ///< what is printed when the command has succeeded

  /// Leaves the document that was open for another one, or for null.
  void SetSession(std::unique_ptr<DocumentSession> next);

  const Document& Doc() const { return session->Doc(); }
  /// The document's file in messages.
  Problem::Part Name() const;
};

/// The words of a call, sorted.
struct EditArguments {
  const CommandLine& line;         ///< for the options
  std::vector<std::string> words;  ///< without the file

  bool Has(const char* option) const { return line.Has(option); }
  std::string Value(const char* option, const char* fallback) const { return line.Value(option, fallback); }
  bool IsJson() const { return line.Has("json"); }
};

enum class EditUse {
  kEverywhere,
  kScriptOnly,
  kWithoutDocument,  ///< in scripts, also before a document is open
};

struct EditCommand {
  const char* name;
  EditUse use;
  const char* summary;
  const char* help;
  const char* valueOptions;  ///< separated by blanks
  const char* flagOptions;
  std::size_t least;  ///< count of words, without the file
  std::size_t most;
  /// Leaves the document as it was when it fails.
  Result<> (*run)(EditContext& context, const EditArguments& arguments);
};

inline constexpr std::size_t kManyWords = 100000;

/// Opens a document and tells on standard error what of it can't be read; with `strict` that is a failure.
Result<std::unique_ptr<DocumentSession>> OpenSession(const std::string& path, bool strict);

/// Runs a command on the words of a script line, its name taken off.
Result<> RunInContext(const EditCommand& command, EditContext& context, const std::vector<std::string>& words);

/// Runs a command on the file that the first word names, and saves what it changed.
int RunOnFile(const EditCommand& command, const std::vector<std::string>& words);

template <const EditCommand& kEdit>
int RunAlone(const std::vector<std::string>& words) {
  return RunOnFile(kEdit, words);
}
/// The edit as a command of the program.
template <const EditCommand& kEdit>
Command Alone() {
  return {kEdit.name, kEdit.summary, kEdit.help, &RunAlone<kEdit>};
}

/// All of them, in the order in which they are listed.
const std::vector<const EditCommand*>& EditCommands();
const EditCommand* FindEditCommand(const std::string& name);  ///< null for an unknown name

// Words as things of the document.

/// "3", "0,2-4", "g0" (a group, as "list" numbers them), "all" (that can be edited) or "selected", as IDs,
/// each once.
Result<> ParseObjects(const EditContext& context, const std::string& text, ObjectIDs* ids);
/// One object number.
Result<> ParseObject(const EditContext& context, const std::string& text, ObjectID* id);
/// A layer by its number or its name.
Result<> ParseLayer(const EditContext& context, const std::string& text, LayerID* id);
/// The options --class, --layer, --fill, --stroke, --name and --text, which say what objects are looked for.
Result<> ParseWanted(const EditContext& context, const EditArguments& arguments, Wanted* wanted);
inline constexpr char kWantedOptions[] = "class layer fill stroke name text";
/// "NAME=VALUE" words as pairs.
Result<> ParseAssignments(const std::vector<std::string>& words,
                          std::vector<std::pair<std::string, std::string>>* pairs);
/// Lengths separated by commas, with or without units (CommandLine.h); `what` says what is taken, as in "--bounds takes
/// four numbers as X0,Y0,X1,Y1".
Result<> ParseList(const std::string& text, std::size_t count, Text what, std::vector<double>* numbers);

/// A word of a command line and what it stands for.
template <typename Value>
struct Word {
  const char* word;
  Value value;
};

/// The value of one of a list of words; what they are is part of the refusal.
template <typename Value, std::size_t kCount>
Result<> ParseWord(const std::string& text, const Word<Value> (&words)[kCount], Value* value) {
  std::string known;
  for (const Word<Value>& entry : words) {
    if (text == entry.word) {
      *value = entry.value;
      return {};
    }
    known += (known.empty() ? "" : ", ") + std::string(entry.word);
  }
  return Problem(N_("\"%s\" is none of %s"), {text, known});
}

// The commands, one file an area.
extern const EditCommand kAddEdit, kListEdit, kGetEdit, kSetEdit, kStyleEdit, kDeleteEdit;
extern const EditCommand kMoveEdit, kResizeEdit, kRotateEdit, kAlignEdit, kDistributeEdit, kOrderEdit, kMatchEdit,
    kRepeatEdit;
extern const EditCommand kDuplicateEdit, kCopyEdit, kCutEdit, kPasteEdit, kSelectEdit;
extern const EditCommand kLayersEdit, kLayerEdit, kPageEdit;
extern const EditCommand kGroupEdit, kUngroupEdit, kLockEdit, kUnlockEdit, kHideEdit, kShowEdit;
extern const EditCommand kOpacityEdit, kFlipEdit, kDashEdit, kLabelEdit, kGuideEdit;
extern const EditCommand kInspectEdit, kDrawEdit, kExportEdit, kThumbnailEdit, kImportEdit;
extern const EditCommand kUndoEdit, kRedoEdit, kHistoryEdit, kBeginEdit, kEndEdit, kCancelEdit;
extern const EditCommand kNewEdit, kOpenEdit, kSaveEdit, kCloseEdit;

/// `new` with the name of the file, as a command of its own.
int RunNewOnFile(const std::vector<std::string>& words);

}  // namespace host

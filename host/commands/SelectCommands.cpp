// Commands of the selection and the clipboard.
#include <algorithm>

#include "host/commands/EditCommand.h"
#include "host/listings/JsonWriter.h"
#include "host/storage/DocumentFile.h"
#include "host/storage/ReadFile.h"
#include "host/text/Localisation.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

bool ParseOffset(const EditArguments& arguments, const char* fallback, std::vector<double>* offset,
                 std::string* error) {
  return ParseList(arguments.Value("offset", fallback), 2, "--offset takes two numbers as DX,DY", offset, error);
}

bool FindWithin(const EditContext& context, const EditArguments& arguments, const char* option, Band rule,
                ObjectIDs* found, std::string* error) {
  std::vector<double> b;
  if (!ParseList(arguments.Value(option, ""), 4, "a band is four numbers as X0,Y0,X1,Y1", &b, error)) return false;
  *found = context.session->ObjectsIn({b[0], b[1], b[2], b[3]}, rule);
  return true;
}

bool FindAt(const EditContext& context, const EditArguments& arguments, ObjectIDs* found, std::string* error) {
  std::vector<double> point;
  double tolerance = 0;
  if (!ParseList(arguments.Value("at", ""), 2, "--at takes two numbers as X,Y", &point, error)) return false;
  if (!ParseFinite(arguments.Value("tolerance", "1"), &tolerance)) {
    *error = "--tolerance takes a number";
    return false;
  }
  const ObjectID id = context.session->ObjectAt({point[0], point[1]}, tolerance);
  if (id != kNoObjectID) found->push_back(id);
  return true;
}

bool FindObjects(const EditContext& context, const EditArguments& arguments, ObjectIDs* found, std::string* error) {
  if (arguments.Has("at")) return FindAt(context, arguments, found, error);
  if (arguments.Has("within")) return FindWithin(context, arguments, "within", Band::kWithin, found, error);
  if (arguments.Has("touching")) return FindWithin(context, arguments, "touching", Band::kTouched, found, error);
  if (!arguments.words.empty() && arguments.words[0] != "none") {
    return ParseObjects(context, arguments.words[0], found, error);
  }
  if (arguments.words.empty()) *found = context.session->Selected().IDs();
  return true;
}

bool RunSelect(EditContext& context, const EditArguments& arguments, std::string* error) {
  ObjectIDs found;
  if (!FindObjects(context, arguments, &found, error)) return false;
  if (arguments.Has("add")) {
    context.session->AddToSelection(found);
  } else {
    context.session->Select(found);
  }
  std::vector<std::size_t> numbers;
  for (const ObjectID id : context.session->Selected().IDs()) numbers.push_back(context.Doc().NumberOf(id));
  JsonWriter json;
  json.BeginArray();
  for (const std::size_t number : numbers) {
    json.Integer(static_cast<long long>(number));
    context.output += (context.output.empty() ? "" : " ") + std::to_string(number);
  }
  json.EndArray();
  context.output = arguments.IsJson() ? json.Line() : context.output + "\n";
  return true;
}

bool RunDuplicate(EditContext& context, const EditArguments& arguments, std::string* error) {
  ObjectIDs ids;
  std::vector<double> offset;
  return ParseObjects(context, arguments.words[0], &ids, error) && ParseOffset(arguments, "10,-10", &offset, error) &&
         context.session->Duplicate(ids, offset[0], offset[1], error);
}

// The clipboard lives as long as the script; a command of its own needs a file.
bool KeepClipboard(EditContext& context, const EditArguments& arguments, std::string bytes, std::string* error) {
  if (arguments.Has("to")) return ReplaceFile(arguments.Value("to", ""), bytes.data(), bytes.size(), error);
  if (!context.inScript) {
    *error = "outside of a script --to has to name the file that takes the objects";
    return false;
  }
  context.clipboard = std::move(bytes);
  return true;
}

bool RunCopy(EditContext& context, const EditArguments& arguments, std::string* error) {
  ObjectIDs ids;
  if (!ParseObjects(context, arguments.words[0], &ids, error)) return false;
  std::string bytes = context.session->Copy(ids);
  if (!ids.empty() && !bytes.empty()) return KeepClipboard(context, arguments, std::move(bytes), error);
  *error = "there is no object to copy";
  return false;
}

bool RunCut(EditContext& context, const EditArguments& arguments, std::string* error) {
  ObjectIDs ids;
  std::string bytes;
  if (!ParseObjects(context, arguments.words[0], &ids, error)) return false;
  EditStep step(*context.session, Tr("Cut"));
  return context.session->Cut(ids, &bytes, error) && KeepClipboard(context, arguments, std::move(bytes), error) &&
         step.End();
}

bool RunPaste(EditContext& context, const EditArguments& arguments, std::string* error) {
  std::vector<double> offset;
  std::string bytes = context.clipboard;
  if (!ParseOffset(arguments, "0,0", &offset, error)) return false;
  if (arguments.Has("from") && !ReadWholeFile(arguments.Value("from", ""), &bytes, error)) return false;
  return context.session->Paste(bytes, offset[0], offset[1], error);
}

}  // namespace

const EditCommand kSelectEdit = {
    "select",
    EditUse::kEverywhere,
    "select objects, or find them by place",
    "usage: objecthost select FILE [OBJECTS | none] [--at X,Y [--tolerance UNITS] | --within X0,Y0,X1,Y1 |\n"
    "                  --touching X0,Y0,X1,Y1] [--add] [--json]\n\n"
    "Selects objects and prints their numbers: those named, the foremost one that shows ink at a point,\n"
    "or those that a band takes whole or touches. In a script the selection stays, and later commands\n"
    "name it \"selected\". Objects of hidden and locked layers are not selected.\n",
    "at tolerance within touching",
    "add json",
    0,
    1,
    &RunSelect};

const EditCommand kDuplicateEdit = {"duplicate",
                                    EditUse::kEverywhere,
                                    "duplicate objects",
                                    "usage: objecthost duplicate FILE OBJECTS [--offset DX,DY]\n\n"
                                    "Copies objects (a number, several as in 0,2-4, or all) in front, moved by DX,DY\n"
                                    "(10,-10).\n",
                                    "offset",
                                    "",
                                    1,
                                    1,
                                    &RunDuplicate};

const EditCommand kCopyEdit = {
    "copy",
    EditUse::kEverywhere,
    "copy objects for \"paste\"",
    "usage: objecthost copy FILE OBJECTS --to CLIPBOARD\n\n"
    "Writes objects (a number, several as in 0,2-4, or all) into a file that \"paste\" reads.\n"
    "In a script --to may be left out.\n",
    "to",
    "",
    1,
    1,
    &RunCopy};

const EditCommand kCutEdit = {"cut",
                              EditUse::kEverywhere,
                              "copy objects and delete them",
                              "usage: objecthost cut FILE OBJECTS --to CLIPBOARD\n\n"
                              "What \"copy\" does, then deletes the objects.\n",
                              "to",
                              "",
                              1,
                              1,
                              &RunCut};

const EditCommand kPasteEdit = {
    "paste",
    EditUse::kEverywhere,
    "add objects that were copied",
    "usage: objecthost paste FILE --from CLIPBOARD [--offset DX,DY]\n\n"
    "Adds copied objects in front, moved by DX,DY (0,0). In a script --from may be left out.\n",
    "from offset",
    "",
    0,
    0,
    &RunPaste};

}  // namespace host

// Commands of the selection and the clipboard.
#include <algorithm>

#include "host/commands/EditCommand.h"
#include "host/listings/JsonWriter.h"
#include "host/storage/WholeFiles.h"
#include "host/text/Localisation.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

Result<> ParseOffset(const EditArguments& arguments, const char* fallback, std::vector<double>* offset) {
  return ParseList(arguments.Value("offset", fallback), 2, N_("--offset takes two numbers as DX,DY"), offset);
}

Result<> FindWithin(const EditContext& context, const EditArguments& arguments, const char* option, Band rule,
                    ObjectIDs* found) {
  std::vector<double> b;
  if (const auto done = ParseList(arguments.Value(option, ""), 4, N_("a band is four numbers as X0,Y0,X1,Y1"), &b);
      !done)
    return done.Why();
  *found = context.session->Selection().InBand({b[0], b[1], b[2], b[3]}, rule);
  return {};
}

Result<> FindAt(const EditContext& context, const EditArguments& arguments, ObjectIDs* found) {
  std::vector<double> point;
  double tolerance = 0;
  if (const auto done = ParseList(arguments.Value("at", ""), 2, N_("--at takes two numbers as X,Y"), &point); !done)
    return done.Why();
  if (!ParseFinite(arguments.Value("tolerance", "1"), &tolerance)) {
    return Problem(N_("--tolerance takes a number"));
  }
  const SessionSelection& selection = context.session->Selection();
  const AGPoint place{point[0], point[1]};
  bool fromSelected = false;
  const ObjectID id = arguments.Has("below") ? selection.ObjectBelow(place, tolerance, &fromSelected)
                                             : selection.ObjectAt(place, tolerance);
  if (id != kNoObjectID) *found = selection.UnitOf(id);
  return {};
}

Result<> FindNamed(const EditContext& context, const EditArguments& arguments, ObjectIDs* found) {
  Wanted wanted;
  if (const auto done = ParseWanted(context, arguments, &wanted); !done) return done.Why();
  if (!wanted.IsEmpty()) {
    *found = FindObjects(context.Doc(), wanted);
    return {};
  }
  if (arguments.Has("at")) return FindAt(context, arguments, found);
  if (arguments.Has("within")) return FindWithin(context, arguments, "within", Band::kWithin, found);
  if (arguments.Has("touching")) return FindWithin(context, arguments, "touching", Band::kTouched, found);
  if (!arguments.words.empty() && arguments.words[0] != "none") {
    return ParseObjects(context, arguments.words[0], found);
  }
  if (arguments.words.empty()) *found = context.session->Selection().IDs();
  return {};
}

constexpr Word<Likeness> kLikenesses[] = {
    {"fill", Likeness::kFill}, {"stroke", Likeness::kStroke}, {"class", Likeness::kClass}};

// All that are like the first of the objects.
Result<> AddAlike(const EditContext& context, const std::string& what, ObjectIDs* found) {
  Likeness likeness{};
  if (const auto done = ParseWord(what, kLikenesses, &likeness); !done) return done.Why();
  if (!found->empty()) *found = context.session->Selection().Alike(found->front(), likeness);
  return {};
}

Result<> RunSelect(EditContext& context, const EditArguments& arguments) {
  ObjectIDs found;
  if (const auto done = FindNamed(context, arguments, &found); !done) return done.Why();
  if (arguments.Has("same")) {
    if (const auto done = AddAlike(context, arguments.Value("same", ""), &found); !done) return done.Why();
  }
  if (arguments.Has("add")) {
    context.session->Selection().Add(found);
  } else {
    context.session->Selection().Select(found);
  }
  std::vector<std::size_t> numbers;
  for (const ObjectID id : context.session->Selection().IDs()) numbers.push_back(context.Doc().NumberOf(id));
  JsonWriter json;
  json.BeginArray();
  for (const std::size_t number : numbers) {
    json.Integer(static_cast<long long>(number));
    context.output += (context.output.empty() ? "" : " ") + std::to_string(number);
  }
  json.EndArray();
  context.output = arguments.IsJson() ? json.Line() : context.output + "\n";
  return {};
}

Result<> RunDuplicate(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  std::vector<double> offset;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseOffset(arguments, "10,-10", &offset); !done) return done.Why();
  return context.session->Clipboard().Duplicate(ids, offset[0], offset[1]);
}

// The clipboard lives as long as the script; a command of its own needs a file.
Result<> KeepClipboard(EditContext& context, const EditArguments& arguments, std::string bytes) {
  if (arguments.Has("to")) return ReplaceFile(arguments.Value("to", ""), bytes.data(), bytes.size());
  if (!context.inScript) {
    return Problem(N_("outside of a script --to has to name the file that takes the objects"));
  }
  context.clipboard = std::move(bytes);
  return {};
}

Result<> RunCopy(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  std::string bytes = context.session->Clipboard().Copy(ids);
  if (!ids.empty() && !bytes.empty()) return KeepClipboard(context, arguments, std::move(bytes));
  return Problem(N_("there is no object to copy"));
}

Result<> RunCut(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  std::string bytes;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  EditStep step(context.session->Steps(), Tr("Cut"));
  if (const auto done = context.session->Clipboard().Cut(ids, &bytes); !done) return done.Why();
  if (const auto done = KeepClipboard(context, arguments, std::move(bytes)); !done) return done.Why();
  return step.End();
}

Result<> RunPaste(EditContext& context, const EditArguments& arguments) {
  std::vector<double> offset;
  std::string bytes = context.clipboard;
  if (const auto done = ParseOffset(arguments, "0,0", &offset); !done) return done.Why();
  if (arguments.Has("from")) {
    if (const auto done = ReadWholeFile(arguments.Value("from", ""), &bytes); !done) return done.Why();
  }
  return context.session->Clipboard().Paste(bytes, offset[0], offset[1]);
}

}  // namespace

const EditCommand kSelectEdit = {
    "select",
    EditUse::kEverywhere,
    "select objects, or find them by place",
    "usage: objecthost select FILE [OBJECTS | none] [--at X,Y [--below] [--tolerance UNITS] |\n"
    "                  --within X0,Y0,X1,Y1 | --touching X0,Y0,X1,Y1 | WHAT] [--same fill|stroke|class] [--add] "
    "[--json]\n\n"
    "Selects objects and prints their numbers: those named, the foremost one that shows ink at a point\n"
    "(with --below the next one behind what is selected there),\n"
    "or those that a band takes whole or touches; with --same all that are filled or outlined like the\n"
    "first of them, or of its class. WHAT is one or more of --class CLASS, --layer LAYER, --fill COLOUR,\n"
    "--stroke COLOUR (a name, #RRGGBB, R,G,B or none), --text TEXT, a part of the label or of another text that\n"
    "the object has, and --name TEXT, a part of either or of the name of the class; all have to fit. In a script\n"
    "the selection stays, and later commands name it \"selected\". A place or a band takes whole groups. What is "
    "hidden or locked is not selected.\n",
    "at tolerance within touching same class layer fill stroke name text",
    "add below json",
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

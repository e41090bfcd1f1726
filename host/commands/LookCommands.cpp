// Commands of how objects are shown.
#include <algorithm>

#include "host/commands/EditCommand.h"
#include "host/text/ParseNumber.h"

namespace host {
namespace {

Result<> RunOpacity(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  double percent = 0;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (!ParseFinite(arguments.words[1], &percent) || !(percent >= 0 && percent <= 100)) {
    return Problem(N_("\"%s\" is no number from 0 to 100"), {arguments.words[1]});
  }
  return context.session->Looks().SetOpacity(ids, percent / 100);
}

Result<> RunFlip(EditContext& context, const EditArguments& arguments) {
  constexpr Word<Axis> kAxes[] = {{"horizontal", Axis::kHorizontal}, {"vertical", Axis::kVertical}};
  ObjectIDs ids;
  Axis axis{};
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseWord(arguments.words[1], kAxes, &axis); !done) return done.Why();
  return context.session->Looks().Flip(ids, axis);
}

Result<> RunDash(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  std::vector<double> dashes;
  const std::string& text = arguments.words[1];
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  const auto count = static_cast<std::size_t>(std::ranges::count(text, ',')) + 1;
  if (text != "none" && !ParseNumbers(text, count, &dashes)) {
    return Problem(N_("\"%s\" is neither lengths separated by commas nor \"none\""), {text});
  }
  return context.session->Looks().SetDashes(ids, dashes);
}

}  // namespace

const EditCommand kOpacityEdit = {
    "opacity",
    EditUse::kEverywhere,
    "let what is behind objects show through",
    "usage: objecthost opacity FILE OBJECTS PERCENT\n\n"
    "Shows objects (a number, several as in 0,2-4, a group as in g0, or all) as faint as\n"
    "PERCENT says, from 0 to 100, each as one: fill and outline together.\n",
    "",
    "",
    2,
    2,
    &RunOpacity};

const EditCommand kFlipEdit = {"flip",
                               EditUse::kEverywhere,
                               "mirror objects",
                               "usage: objecthost flip FILE OBJECTS horizontal|vertical\n\n"
                               "Exchanges left and right, or top and bottom, of objects (a number, several as in\n"
                               "0,2-4, a group as in g0, or all), all together about the middle of their box.\n",
                               "",
                               "",
                               2,
                               2,
                               &RunFlip};

const EditCommand kDashEdit = {
    "dash",
    EditUse::kEverywhere,
    "draw outlines in dashes",
    "usage: objecthost dash FILE OBJECTS LENGTHS|none\n\n"
    "Gives the pen of objects (a number, several as in 0,2-4, a group as in g0, or all) strokes and gaps. LENGTHS\n"
    "are those of strokes and gaps in turn, as in 3,2 or 4,2,1,2, in widths of the pen; strokes of 0 are dots where\n"
    "the pen has round caps.\n",
    "",
    "",
    2,
    2,
    &RunDash};

}  // namespace host

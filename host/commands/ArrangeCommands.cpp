// Commands that move, stretch, turn, align and order objects.
#include "host/commands/EditCommand.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

constexpr Word<Alignment> kAlignments[] = {{"left", Alignment::kLeft},     {"center", Alignment::kCenter},
                                           {"right", Alignment::kRight},   {"top", Alignment::kTop},
                                           {"middle", Alignment::kMiddle}, {"bottom", Alignment::kBottom}};
constexpr Word<Axis> kAxes[] = {{"horizontal", Axis::kHorizontal}, {"vertical", Axis::kVertical}};
constexpr Word<OrderChange> kOrders[] = {{"front", OrderChange::kToFront},
                                         {"back", OrderChange::kToBack},
                                         {"forward", OrderChange::kForward},
                                         {"backward", OrderChange::kBackward}};

constexpr Word<Sides> kSides[] = {{"width", Sides::kWidth}, {"height", Sides::kHeight}, {"size", Sides::kBoth}};

Result<> ParseKey(const EditContext& context, const EditArguments& arguments, ObjectID* key) {
  if (!arguments.Has("to")) return {};
  return ParseObject(context, arguments.Value("to", ""), key);
}

Result<> ParseOffset(const std::string& text, std::vector<double>* offset) {
  return ParseList(text, 2, N_("an offset is two numbers as DX,DY"), offset);
}

Result<> RunMove(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  std::vector<double> offset;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseOffset(arguments.words[1], &offset); !done) return done.Why();
  return context.session->Objects().Move(ids, offset[0], offset[1]);
}

Result<> RunResize(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  std::vector<double> b;
  AGRect box;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseList(arguments.words[1], 4, N_("a box is four numbers as X0,Y0,X1,Y1"), &b); !done)
    return done.Why();
  const AGRect to{b[0], b[1], b[2], b[3]};
  if (ids.size() == 1) return context.session->Objects().SetPlacement(ids[0], {to, context.Doc().Find(ids[0])->angle});
  context.session->Selection().GetBox(ids, &box);
  return context.session->Objects().Resize(ids, box, to);
}

Result<> RunRotate(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  double degrees = 0;
  std::vector<double> about;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (!ParseDegrees(arguments.words[1], &degrees)) {
    return Problem(N_("\"%s\" is no number of degrees"), {arguments.words[1]});
  }
  if (!arguments.Has("about")) return context.session->Objects().Rotate(ids, degrees * kDegToRad);
  if (const auto done = ParseList(arguments.Value("about", ""), 2, N_("--about takes two numbers as X,Y"), &about);
      !done)
    return done.Why();
  return context.session->Objects().Rotate(ids, degrees * kDegToRad, {about[0], about[1]});
}

Result<> RunAlign(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  Alignment alignment{};
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseWord(arguments.words[1], kAlignments, &alignment); !done) return done.Why();
  ObjectID key = kNoObjectID;
  if (const auto done = ParseKey(context, arguments, &key); !done) return done.Why();
  const AlignTo to = arguments.Has("page") ? AlignTo::kPage : arguments.Has("to") ? AlignTo::kKey : AlignTo::kObjects;
  return context.session->Arrangement().Align(ids, alignment, to, key);
}

Result<> RunMatch(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  Sides sides{};
  ObjectID key = kNoObjectID;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseWord(arguments.words[1], kSides, &sides); !done) return done.Why();
  if (const auto done = ParseKey(context, arguments, &key); !done) return done.Why();
  return context.session->Arrangement().Match(ids, sides, key);
}

Result<> RunRepeat(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Objects().Repeat(ids);
}

Result<> RunDistribute(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  Axis axis{};
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseWord(arguments.words[1], kAxes, &axis); !done) return done.Why();
  return context.session->Arrangement().Distribute(ids, axis);
}

Result<> RunOrder(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  OrderChange change{};
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseWord(arguments.words[1], kOrders, &change); !done) return done.Why();
  return context.session->Arrangement().ChangeOrder(ids, change);
}

}  // namespace

const EditCommand kMoveEdit = {"move",
                               EditUse::kEverywhere,
                               "move objects",
                               "usage: objecthost move FILE OBJECTS DX,DY\n\n"
                               "Moves objects (a number, several as in 0,2-4, or all) by DX to the right and DY up.\n"
                               "Lengths may be sums with units, as in 1cm+2,0.\n",
                               "",
                               "",
                               2,
                               2,
                               &RunMove};

const EditCommand kResizeEdit = {
    "resize",
    EditUse::kEverywhere,
    "stretch objects",
    "usage: objecthost resize FILE OBJECTS X0,Y0,X1,Y1\n\n"
    "Gives one object these bounds, or stretches several as their common box is stretched to\n"
    "this one. OBJECTS is a number, several as in 0,2-4, or all.\n",
    "",
    "",
    2,
    2,
    &RunResize};

const EditCommand kRotateEdit = {
    "rotate",
    EditUse::kEverywhere,
    "turn objects",
    "usage: objecthost rotate FILE OBJECTS DEGREES [--about X,Y]\n\n"
    "Turns objects together, counter-clockwise, about the centre of their common box or about\n"
    "a point. OBJECTS is a number, several as in 0,2-4, or all.\n",
    "about",
    "",
    2,
    2,
    &RunRotate};

const EditCommand kAlignEdit = {
    "align",
    EditUse::kEverywhere,
    "align objects with each other or the page",
    "usage: objecthost align FILE OBJECTS left|center|right|top|middle|bottom [--page | --to NUMBER]\n\n"
    "Moves objects so that their boxes meet an edge or middle line of their common box, of the page, or\n"
    "of one of them. OBJECTS is a number, several as in 0,2-4, or all. Whole groups move as one.\n",
    "to",
    "page",
    2,
    2,
    &RunAlign};

const EditCommand kDistributeEdit = {"distribute",
                                     EditUse::kEverywhere,
                                     "make the gaps between objects equal",
                                     "usage: objecthost distribute FILE OBJECTS horizontal|vertical\n\n"
                                     "Moves three or more objects so that the gaps between their boxes are equal; the\n"
                                     "outermost two stay. OBJECTS is several numbers as in 0,2-4, or all.\n",
                                     "",
                                     "",
                                     2,
                                     2,
                                     &RunDistribute};

const EditCommand kMatchEdit = {
    "match",
    EditUse::kEverywhere,
    "give objects the size of one of them",
    "usage: objecthost match FILE OBJECTS width|height|size [--to NUMBER]\n\n"
    "Gives objects the width, the height or both of one of them, the last one unless --to names it. Their\n"
    "middles stay. OBJECTS is several numbers as in 0,2-4, or all. Whole groups are stretched as one.\n",
    "to",
    "",
    2,
    2,
    &RunMatch};

const EditCommand kRepeatEdit = {
    "repeat",
    EditUse::kScriptOnly,
    "move, stretch or turn objects once more",
    "usage: repeat OBJECTS\n\n"
    "Does to objects what was last done to any by move, resize or rotate: the same way, the\n"
    "same factors from the same side, the same angle about their own middle.\n",
    "",
    "",
    1,
    1,
    &RunRepeat};

const EditCommand kOrderEdit = {
    "order",
    EditUse::kEverywhere,
    "bring objects to the front or send them back",
    "usage: objecthost order FILE OBJECTS front|back|forward|backward\n\n"
    "Changes the drawing order within the layer; \"forward\" and \"backward\" by one place.\n"
    "The numbers of objects follow the drawing order.\n",
    "",
    "",
    2,
    2,
    &RunOrder};

}  // namespace host

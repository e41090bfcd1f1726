// Commands of layers, of what is hidden, locked and grouped, and of the page.
#include <cstdio>

#include "host/commands/EditCommand.h"
#include "host/commands/PageOptions.h"
#include "host/listings/DocumentListing.h"
#include "host/listings/JsonListing.h"
#include "host/text/Localisation.h"
#include "host/text/Printable.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

Result<> RunLayers(EditContext& context, const EditArguments& arguments) {
  if (arguments.IsJson()) {
    context.output = JsonOfLayers(*context.session);
    return {};
  }
  std::size_t number = 0;
  for (const Layer* layer : context.Doc().Layers()) {
    context.output += std::to_string(number++) + "  " + std::to_string(layer->objects.Count()) + " objects";
    if (!layer->settings.visible) context.output += ", hidden";
    if (layer->settings.locked) context.output += ", locked";
    if (layer->id == context.session->Layers().Active()) context.output += ", active";
    context.output += "  " + Printable(layer->settings.name) + "\n";
  }
  return {};
}

using Words = std::vector<std::string>;

Result<> AddLayer(EditContext& context, const Words& words) {
  std::size_t index = context.Doc().Layers().size();
  if (words.size() > 2 && (!ParseIndex(words[2], &index) || index > context.Doc().Layers().size())) {
    return Problem(N_("\"%s\" is no place of a layer"), {words[2]});
  }
  if (words.size() > 1 && FindInvalidUtf8(words[1]) != words[1].size()) return Problem(N_("a layer needs a name"));
  const LayerID id = context.session->Layers().Add(words.size() > 1 ? words[1] : "", index);
  context.output = std::to_string(context.Doc().IndexOfLayer(id)) + "\n";
  return {};
}

/// What is done to a layer that is there; `text` is the third word.
struct LayerAction {
  const char* word;
  bool takesText;
  Result<> (*run)(EditContext& context, LayerID id, const std::string& text);
};

Result<> MoveLayer(EditContext& context, LayerID id, const std::string& text) {
  std::size_t index = 0;
  if (ParseIndex(text, &index) && index < context.Doc().Layers().size())
    return context.session->Layers().Move(id, index);
  return Problem(N_("\"%s\" is no place of a layer"), {text});
}

Result<> TakeObjects(EditContext& context, LayerID id, const std::string& text) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, text, &ids); !done) return done.Why();
  return context.session->Layers().MoveObjects(ids, id);
}

constexpr LayerAction kActions[] = {
    {"remove", false, [](EditContext& c, LayerID id, const std::string&) { return c.session->Layers().Remove(id); }},
    {"rename", true,
     [](EditContext& c, LayerID id, const std::string& text) { return c.session->Layers().SetName(id, text); }},
    {"show", false,
     [](EditContext& c, LayerID id, const std::string&) { return c.session->Layers().SetVisible(id, true); }},
    {"hide", false,
     [](EditContext& c, LayerID id, const std::string&) { return c.session->Layers().SetVisible(id, false); }},
    {"lock", false,
     [](EditContext& c, LayerID id, const std::string&) { return c.session->Layers().SetLocked(id, true); }},
    {"unlock", false,
     [](EditContext& c, LayerID id, const std::string&) { return c.session->Layers().SetLocked(id, false); }},
    {"move", true, &MoveLayer},
    {"take", true, &TakeObjects},
    {"activate", false,
     [](EditContext& c, LayerID id, const std::string&) -> Result<> {
       c.session->Layers().SetActive(id);
       return {};
     }},
};

Result<> RunLayer(EditContext& context, const EditArguments& arguments) {
  const Words& words = arguments.words;
  if (words[0] == "add") return AddLayer(context, words);
  for (const LayerAction& action : kActions) {
    if (words[0] != action.word) continue;
    LayerID id = kNoLayerID;
    if (words.size() != (action.takesText ? 3 : 2)) {
      return Problem(action.takesText ? N_("\"layer %s\" takes two arguments") : N_("\"layer %s\" takes one argument"),
                     {words[0]});
    }
    if (const auto done = ParseLayer(context, words[1], &id); !done) return done.Why();
    return action.run(context, id, action.takesText ? words[2] : std::string());
  }
  return Problem(N_("\"%s\" can't be done with a layer; --help tells what can"), {words[0]});
}

Result<> TakeAids(EditContext& context, const EditArguments& arguments) {
  PageAids aids = context.Doc().Aids();
  std::vector<double> step;
  if (arguments.Has("unit")) {
    const auto unit = LengthUnitOf(arguments.Value("unit", ""));
    if (!unit) return Problem(N_("\"%s\" is none of %s"), {arguments.Value("unit", ""), "px, pt, mm, cm, in"});
    aids.unit = *unit;
  }
  if (arguments.Has("grid")) {
    if (!ParseLengths(arguments.Value("grid", ""), 1, &step)) return Problem(N_("--grid takes a length"));
    aids.gridStep = step[0];
  }
  if (aids == context.Doc().Aids()) return {};
  return context.session->SetAids(std::move(aids), Tr("Change Grid"));
}

Result<> RunPage(EditContext& context, const EditArguments& arguments) {
  AGSize size = context.Doc().Page();
  AGColor background = context.Doc().Background();
  if (const auto done = ParsePageOptions(arguments.line, &size, &background); !done) return done.Why();
  EditStep step(context.session->Steps(), Tr("Change Page"));
  if (arguments.Has("fit")) {
    if (const auto done = context.session->FitPage(); !done) return done.Why();
    size = context.Doc().Page();
  } else if (const auto done = context.session->SetPage(size); !done)
    return done.Why();
  context.session->SetBackground(background);
  if (const auto done = TakeAids(context, arguments); !done) return done.Why();
  char text[160];
  std::snprintf(text, sizeof(text), "%.17g by %.17g, background %u,%u,%u\n", size.width, size.height, background.Red(),
                background.Green(), background.Blue());
  context.output = text;
  if (const PageAids& aids = context.Doc().Aids(); !(aids == PageAids())) context.output += AidsText(aids);
  return step.End();
}

Result<> RunGroup(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = context.session->Marks().Group(ids); !done) return done.Why();
  return {};
}

Result<> RunUngroup(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Marks().Ungroup(ids);
}

Result<> RunLock(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Marks().SetLocked(ids, true);
}

Result<> RunHide(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Marks().SetHidden(ids, true);
}

// All are those of which there is something to take back.
Result<> RunUnlock(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids = context.session->Marks().Locked();
  if (arguments.words[0] == "all" && ids.empty()) return {};
  if (arguments.words[0] != "all") {
    if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  }
  return context.session->Marks().SetLocked(ids, false);
}

Result<> RunShow(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids = context.session->Marks().Hidden();
  if (arguments.words[0] == "all" && ids.empty()) return {};
  if (arguments.words[0] != "all") {
    if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  }
  return context.session->Marks().SetHidden(ids, false);
}

}  // namespace

const EditCommand kLayersEdit = {"layers",
                                 EditUse::kEverywhere,
                                 "list the layers of a document",
                                 "usage: objecthost layers FILE [--json]\n\n"
                                 "One line a layer, the hindmost first: number, count of objects, state, name.\n",
                                 "",
                                 "json",
                                 0,
                                 0,
                                 &RunLayers};

const EditCommand kLayerEdit = {
    "layer",
    EditUse::kEverywhere,
    "add, remove and change layers",
    "usage: objecthost layer FILE ACTION ...\n\n"
    "  add [NAME [PLACE]]      a new layer, above all others or at a place, 0 the hindmost; prints its number\n"
    "  remove LAYER            with its objects; the only layer can't be removed\n"
    "  rename LAYER NAME\n"
    "  show, hide LAYER\n"
    "  lock, unlock LAYER      objects of locked and hidden layers can't be changed\n"
    "  move LAYER PLACE\n"
    "  take LAYER OBJECTS      moves objects to the layer, in front\n"
    "  activate LAYER          in a script: the layer that gets new objects\n\n"
    "LAYER is a number or a name, OBJECTS a number, several as in 0,2-4, or all.\n",
    "",
    "",
    1,
    3,
    &RunLayer};

const EditCommand kPageEdit = {
    "page",
    EditUse::kEverywhere,
    "show or change the page",
    "usage: objecthost page FILE [--size W,H | --paper NAME | --fit] [--orientation portrait|landscape]\n"
    "                  [--background R,G,B] [--unit px|pt|mm|cm|in] [--grid STEP]\n\n"
    "Changes what is given and prints the page's size and background, and its unit, grid and guides where\n"
    "there is something to tell. NAME is A3, A4, A5, A6, B5, Letter, Legal or Tabloid; --fit makes the page\n"
    "as large as all that is shown, which moves to its corner. The unit is what the window shows lengths in;\n"
    "commands take and print map units all the same.\n",
    "size paper orientation background unit grid",
    "fit",
    0,
    0,
    &RunPage};

const EditCommand kGroupEdit = {
    "group",
    EditUse::kEverywhere,
    "make a group of objects",
    "usage: objecthost group FILE OBJECTS\n\n"
    "Makes one thing of two or more objects or groups (several as in 0,2-4 or g0,5, or all): in the window a\n"
    "click takes all of it. They come together in front where the foremost one is. Objects that are named without\n"
    "the rest of their group leave it.\n",
    "",
    "",
    1,
    1,
    &RunGroup};

const EditCommand kUngroupEdit = {"ungroup",
                                  EditUse::kEverywhere,
                                  "take groups apart",
                                  "usage: objecthost ungroup FILE OBJECTS\n\n"
                                  "Takes the outermost groups apart that lie wholly among the objects (g0, several\n"
                                  "as in 0,2-4, or all). Groups within them stay.\n",
                                  "",
                                  "",
                                  1,
                                  1,
                                  &RunUngroup};

const EditCommand kLockEdit = {"lock",
                               EditUse::kEverywhere,
                               "keep objects from being selected and changed",
                               "usage: objecthost lock FILE OBJECTS\n\n"
                               "Locks objects: a number, several as in 0,2-4, a group as in g0, or all.\n",
                               "",
                               "",
                               1,
                               1,
                               &RunLock};

const EditCommand kUnlockEdit = {"unlock",
                                 EditUse::kEverywhere,
                                 "unlock objects",
                                 "usage: objecthost unlock FILE OBJECTS\n\n"
                                 "Takes back what \"lock\" does. \"all\" are all that are locked.\n",
                                 "",
                                 "",
                                 1,
                                 1,
                                 &RunUnlock};

const EditCommand kHideEdit = {
    "hide",
    EditUse::kEverywhere,
    "hide objects",
    "usage: objecthost hide FILE OBJECTS\n\n"
    "Hides objects, on the screen and in pictures: a number, several as in 0,2-4, a group as in\n"
    "g0, or all.\n",
    "",
    "",
    1,
    1,
    &RunHide};

const EditCommand kShowEdit = {"show",
                               EditUse::kEverywhere,
                               "show objects that were hidden",
                               "usage: objecthost show FILE OBJECTS\n\n"
                               "Takes back what \"hide\" does. \"all\" are all that are hidden.\n",
                               "",
                               "",
                               1,
                               1,
                               &RunShow};

}  // namespace host

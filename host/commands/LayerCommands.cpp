// Commands of layers and of the page.
#include <cstdio>

#include "host/commands/EditCommand.h"
#include "host/commands/PageOptions.h"
#include "host/listings/JsonListing.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

bool RunLayers(EditContext& context, const EditArguments& arguments, std::string*) {
  if (arguments.IsJson()) {
    context.output = JsonOfLayers(*context.session);
    return true;
  }
  std::size_t number = 0;
  for (const auto& layer : context.Doc().Layers()) {
    context.output += std::to_string(number++) + "  " + std::to_string(layer->objects.Count()) + " objects";
    if (!layer->settings.visible) context.output += ", hidden";
    if (layer->settings.locked) context.output += ", locked";
    if (layer->id == context.session->ActiveLayer()) context.output += ", active";
    context.output += "  " + layer->settings.name + "\n";
  }
  return true;
}

using Words = std::vector<std::string>;

bool AddLayer(EditContext& context, const Words& words, std::string* error) {
  std::size_t index = context.Doc().Layers().size();
  if (words.size() > 2 && (!ParseIndex(words[2], &index) || index > context.Doc().Layers().size())) {
    *error = "\"" + words[2] + "\" is no place of a layer";
    return false;
  }
  const LayerID id = context.session->AddLayer(words.size() > 1 ? words[1] : "", index);
  context.output = std::to_string(context.Doc().IndexOfLayer(id)) + "\n";
  return true;
}

/// What is done to a layer that is there; `text` is the third word.
struct LayerAction {
  const char* word;
  bool takesText;
  bool (*run)(EditContext& context, LayerID id, const std::string& text, std::string* error);
};

bool MoveLayer(EditContext& context, LayerID id, const std::string& text, std::string* error) {
  std::size_t index = 0;
  if (ParseIndex(text, &index)) return context.session->MoveLayer(id, index, error);
  *error = "\"" + text + "\" is no place of a layer";
  return false;
}

bool TakeObjects(EditContext& context, LayerID id, const std::string& text, std::string* error) {
  ObjectIDs ids;
  return ParseObjects(context, text, &ids, error) && context.session->MoveToLayer(ids, id, error);
}

constexpr LayerAction kActions[] = {
    {"remove", false,
     [](EditContext& c, LayerID id, const std::string&, std::string* error) {
       return c.session->RemoveLayer(id, error);
     }},
    {"rename", true,
     [](EditContext& c, LayerID id, const std::string& text, std::string* error) {
       return c.session->SetLayerName(id, text, error);
     }},
    {"show", false,
     [](EditContext& c, LayerID id, const std::string&, std::string* error) {
       return c.session->SetLayerVisible(id, true, error);
     }},
    {"hide", false,
     [](EditContext& c, LayerID id, const std::string&, std::string* error) {
       return c.session->SetLayerVisible(id, false, error);
     }},
    {"lock", false,
     [](EditContext& c, LayerID id, const std::string&, std::string* error) {
       return c.session->SetLayerLocked(id, true, error);
     }},
    {"unlock", false,
     [](EditContext& c, LayerID id, const std::string&, std::string* error) {
       return c.session->SetLayerLocked(id, false, error);
     }},
    {"move", true, &MoveLayer},
    {"take", true, &TakeObjects},
    {"activate", false,
     [](EditContext& c, LayerID id, const std::string&, std::string*) {
       c.session->SetActiveLayer(id);
       return true;
     }},
};

bool RunLayer(EditContext& context, const EditArguments& arguments, std::string* error) {
  const Words& words = arguments.words;
  if (words[0] == "add") return AddLayer(context, words, error);
  for (const LayerAction& action : kActions) {
    if (words[0] != action.word) continue;
    LayerID id = kNoLayerID;
    if (words.size() != (action.takesText ? 3 : 2)) {
      *error = "\"layer " + words[0] + "\" takes " + (action.takesText ? "two arguments" : "one argument");
      return false;
    }
    return ParseLayer(context, words[1], &id, error) &&
           action.run(context, id, action.takesText ? words[2] : std::string(), error);
  }
  *error = "\"" + words[0] + "\" can't be done with a layer; --help tells what can";
  return false;
}

bool RunPage(EditContext& context, const EditArguments& arguments, std::string* error) {
  AGSize size = context.Doc().Page();
  AGColor background = context.Doc().Background();
  if (!ParsePageOptions(arguments.line, &size, &background, error)) return false;
  EditStep step(*context.session, Tr("Change Page"));
  if (!context.session->SetPage(size, error)) return false;
  context.session->SetBackground(background);
  char text[160];
  std::snprintf(text, sizeof(text), "%.17g by %.17g, background %u,%u,%u\n", size.width, size.height, background.Red(),
                background.Green(), background.Blue());
  context.output = text;
  return step.End();
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

const EditCommand kPageEdit = {"page",
                               EditUse::kEverywhere,
                               "show or change the page",
                               "usage: objecthost page FILE [--size W,H] [--background R,G,B]\n\n"
                               "Changes what is given and prints the page's size and background.\n",
                               "size background",
                               "",
                               0,
                               0,
                               &RunPage};

}  // namespace host

// Commands that make, show, change and delete objects.
#include "host/commands/EditCommand.h"
#include "host/listings/DocumentListing.h"
#include "host/listings/JsonListing.h"
#include "host/model/ObjectProperties.h"
#include "host/model/ObjectRecord.h"
#include "host/session/StyleFields.h"
#include "host/text/DisplayText.h"
#include "host/text/Printable.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

Result<> ParsePlacement(const EditArguments& arguments, ObjectPlacement* placement) {
  std::vector<double> b;
  double degrees = 0;
  if (const auto done =
          ParseList(arguments.Value("bounds", "0,0,100,100"), 4, N_("--bounds takes four numbers as X0,Y0,X1,Y1"), &b);
      !done)
    return done.Why();
  if (!ParseDegrees(arguments.Value("angle", "0"), &degrees)) {
    return Problem(N_("--angle takes a number of degrees"));
  }
  *placement = {{b[0], b[1], b[2], b[3]}, degrees * kDegToRad};
  return {};
}

Result<> RunAdd(EditContext& context, const EditArguments& arguments) {
  DocumentSession& session = *context.session;
  ObjectPlacement placement;
  std::vector<std::pair<std::string, std::string>> pairs;
  LayerID layer = session.Layers().Active();
  if (const auto done = ParsePlacement(arguments, &placement); !done) return done.Why();
  if (const auto done = ParseAssignments(arguments.line.Values("set"), &pairs); !done) return done.Why();
  if (arguments.Has("layer")) {
    if (const auto done = ParseLayer(context, arguments.Value("layer", ""), &layer); !done) return done.Why();
  }
  session.Layers().SetActive(layer);
  EditStep step(session.Steps(), "");
  const auto id =
      session.Objects().Add(AKClassID(arguments.words[0].c_str()), arguments.Value("args", "-default"), placement);
  if (!id) return id.Why();
  if (!pairs.empty()) {
    if (const auto done = session.Objects().SetProperties({*id}, pairs); !done) return done.Why();
  }
  context.output = std::to_string(context.Doc().NumberOf(*id)) + "\n";
  return step.End();
}

Result<> RunList(EditContext& context, const EditArguments& arguments) {
  Wanted wanted;
  if (const auto done = ParseWanted(context, arguments, &wanted); !done) return done.Why();
  ListedObjects listed;
  if (!wanted.IsEmpty()) {
    const ObjectIDs found = FindObjects(context.Doc(), wanted);
    listed.emplace(found.begin(), found.end());
  }
  if (arguments.IsJson()) {
    context.output = JsonOfDocument(*context.session, listed);
  } else {
    context.output = arguments.Has("all") ? FullListing(context.Doc(), listed) : ShortListing(context.Doc(), listed);
  }
  return {};
}

Result<> RunGet(EditContext& context, const EditArguments& arguments) {
  ObjectID id = kNoObjectID;
  if (const auto done = ParseObject(context, arguments.words[0], &id); !done) return done.Why();
  const AKDictionary properties = PropertiesOf(*context.Doc().Find(id));
  if (arguments.words.size() == 1) {
    if (arguments.IsJson()) {
      context.output = JsonOfProperties(properties);
      return {};
    }
    properties.ForEach([&context](const AKString& key, const AKValue& value) {
      context.output += Printable(DisplayText(key) + "=" + TextOf(value)) + "\n";
    });
    return {};
  }
  const AKString path = TextForBundles(arguments.words[1]);
  if (!properties.ContainsKey(path)) {
    return Problem(N_("there is no property \"%s\""), {arguments.words[1]});
  }
  const AKValue& value = properties.GetValue(path);
  context.output = arguments.IsJson() ? JsonOfValue(value) : TextOf(value) + "\n";
  return {};
}

Result<> RunSet(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  std::vector<std::pair<std::string, std::string>> pairs;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseAssignments({arguments.words.begin() + 1, arguments.words.end()}, &pairs); !done)
    return done.Why();
  return context.session->Objects().SetProperties(ids, pairs);
}

Result<> RunDelete(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  return context.session->Objects().Delete(ids);
}

Result<> RunStyle(EditContext& context, const EditArguments& arguments) {
  ObjectIDs ids;
  ObjectID from = kNoObjectID;
  if (const auto done = ParseObjects(context, arguments.words[0], &ids); !done) return done.Why();
  if (const auto done = ParseObject(context, arguments.words[1], &from); !done) return done.Why();
  const auto style = StyleOf(context.Doc(), {from});
  if (!style) return WhyPlaceholder(*context.Doc().Find(from));
  return context.session->Objects().SetStyle(ids, *style);
}

}  // namespace

const EditCommand kStyleEdit = {
    "style",
    EditUse::kEverywhere,
    "fill and outline objects like another one",
    "usage: objecthost style FILE OBJECTS FROM\n\n"
    "Gives objects (a number, several as in 0,2-4, or all) the brush, the pen, the opacity and the dashes of the\n"
    "object FROM.\n",
    "",
    "",
    2,
    2,
    &RunStyle};

const EditCommand kAddEdit = {
    "add",
    EditUse::kEverywhere,
    "add an object to a document",
    "usage: objecthost add FILE CLASS [--args TEXT] [--bounds X0,Y0,X1,Y1] [--angle DEGREES]\n"
    "                  [--layer LAYER] [--set NAME=VALUE]...\n\n"
    "Adds an object of a class (\"stdRect\" is the rectangle) in front of the others of the layer (the\n"
    "topmost one) and prints its number. TEXT (\"-default\") is what the class is initialised with. Bounds\n"
    "are 0,0,100,100 unless given; --set is what \"set\" takes. Places and lengths are numbers of map units\n"
    "or sums with units (mm, cm, in, pt, px), such as 2cm+5; angles may have deg or rad.\n",
    "args bounds angle layer set",
    "",
    1,
    1,
    &RunAdd};

const EditCommand kListEdit = {
    "list",
    EditUse::kEverywhere,
    "list the objects of a document",
    "usage: objecthost list FILE [--all] [--json] [--class CLASS] [--layer LAYER] [--fill COLOUR]\n"
    "                  [--stroke COLOUR] [--name TEXT]\n\n"
    "One line an object: number, class, bounds, angle in degrees, and the properties of its\n"
    "class, whether it is hidden or locked, and the groups that it is in, as in g0/g1: g0 names all objects of\n"
    "the group where a command takes objects. With --all every property, to seven digits. With --json the page, the "
    "layers and every\n"
    "property of every object. The other options leave out what does not fit, as with \"select\".\n",
    kWantedOptions,
    "all json",
    0,
    0,
    &RunList};

const EditCommand kGetEdit = {
    "get",
    EditUse::kEverywhere,
    "print properties of an object",
    "usage: objecthost get FILE NUMBER [NAME] [--json]\n\n"
    "Prints all properties as NAME=VALUE, or the value of one. NAME may lead into a property:\n"
    "Pen.Brush.Color.\n",
    "",
    "json",
    1,
    2,
    &RunGet};

const EditCommand kSetEdit = {
    "set",
    EditUse::kEverywhere,
    "change properties of objects",
    "usage: objecthost set FILE OBJECTS NAME=VALUE...\n\n"
    "  Rounding=0.4                    a property of the rectangle's class, taken as 0 to 1\n"
    "  Bounds=\"(10;10;110;60)\"         corners x0, y0, x1, y1; y points up\n"
    "  Angle=30                        degrees about the centre\n"
    "  Brush.Style=Solid               None, Solid, Pattern, LinearGradient, RadialGradient\n"
    "  Brush.Color=\"(255;0;0;128)\"     red, green, blue, alpha\n"
    "  Pen.Size=3  Pen.SizeMode=Relative  Pen.Brush.Color=\"(0;0;0;255)\"\n\n"
    "OBJECTS is a number, several as in 0,2-4, or all. A pen or brush of style None has no other\n"
    "properties until it has another style. Nothing is changed unless every value can be taken.\n",
    "",
    "",
    2,
    kManyWords,
    &RunSet};

const EditCommand kDeleteEdit = {"delete",
                                 EditUse::kEverywhere,
                                 "delete objects",
                                 "usage: objecthost delete FILE OBJECTS\n\n"
                                 "Deletes objects: a number, several as in 0,2-4, or all.\n",
                                 "",
                                 "",
                                 1,
                                 1,
                                 &RunDelete};

}  // namespace host

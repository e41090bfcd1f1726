// Commands that make, show and change documents.
#include <cstdio>

#include "graphics/values/AGConstants.h"
#include "host/ParseNumber.h"
#include "host/commands/Command.h"
#include "host/commands/CommandLine.h"
#include "host/document/DocumentDrawing.h"
#include "host/document/DocumentFile.h"
#include "host/document/DocumentListing.h"
#include "host/document/DocumentSession.h"
#include "host/document/ObjectProperties.h"

namespace host {
namespace {

// A document and one object of it, named by a number.
struct Target {
  std::unique_ptr<DocumentSession> session;
  ObjectID id = kNoObjectID;

  DocumentObject const& Object() const { return *session->Doc().Find(id); }
};

bool Find(std::string const& path, std::string const& numberText, Target* target, std::string* error) {
  std::size_t number = 0;
  if (!ParseIndex(numberText, &number)) {
    *error = "\"" + numberText + "\" is no object number";
    return false;
  }
  target->session = DocumentSession::Open(path, error);
  if (!target->session) return false;
  Document const& document = target->session->Doc();
  if (number >= document.ObjectCount()) {
    *error = "\"" + path + "\" has no object " + numberText + "; it has " + std::to_string(document.ObjectCount());
    return false;
  }
  target->id = document.ObjectAt(number).id;
  return true;
}

bool SetAll(DocumentSession* session, ObjectID id, std::vector<std::string> const& assignments, std::string* error) {
  std::vector<std::pair<std::string, std::string>> pairs;
  for (std::string const& assignment : assignments) {
    std::string name;
    std::string value;
    if (!SplitAssignment(assignment, &name, &value)) {
      *error = "\"" + assignment + "\" is not of the form NAME=VALUE";
      return false;
    }
    pairs.emplace_back(name, value);
  }
  return pairs.empty() || session->SetProperties({id}, pairs, error);
}

bool ParseScale(CommandLine const& line, double* scale, std::string* error) {
  const std::string text = line.Value("scale", "1");
  if (ParseFinite(text, scale) && *scale > 0) return true;
  *error = "\"" + text + "\" is no scale: a number above 0 is needed";
  return false;
}

int RunNew(std::vector<std::string> const& words) {
  CommandLine line({"size", "background"}, {});
  std::string error;
  if (!line.Parse(words, 1, 1, &error)) return Fail(error);
  std::vector<double> size;
  std::vector<double> background;
  if (!ParseNumbers(line.Value("size", "640,480"), 2, &size) || size[0] <= 0 || size[1] <= 0) {
    return Fail("--size takes two numbers above 0 as WIDTH,HEIGHT");
  }
  if (!ParseNumbers(line.Value("background", "255,255,255"), 3, &background)) {
    return Fail("--background takes three numbers from 0 to 255 as RED,GREEN,BLUE");
  }
  unsigned char channels[3];
  for (int i = 0; i < 3; ++i) {
    if (!(background[i] >= 0 && background[i] <= 255)) return Fail("--background takes numbers from 0 to 255");
    channels[i] = static_cast<unsigned char>(background[i]);
  }
  Document document({size[0], size[1]});
  document.SetPage(document.Page(), {channels[0], channels[1], channels[2]});
  return WriteDocument(document, line.Positional()[0], &error) ? 0 : Fail(error);
}

int RunAdd(std::vector<std::string> const& words) {
  CommandLine line({"args", "bounds", "angle", "set"}, {});
  std::string error;
  if (!line.Parse(words, 2, 2, &error)) return Fail(error);
  const auto session = DocumentSession::Open(line.Positional()[0], &error);
  if (!session) return Fail(error);
  std::vector<double> bounds = {0, 0, 100, 100};
  double degrees = 0;
  if (line.Has("bounds") && !ParseNumbers(line.Value("bounds", ""), 4, &bounds)) {
    return Fail("--bounds takes four numbers as X0,Y0,X1,Y1");
  }
  if (!ParseFinite(line.Value("angle", "0"), &degrees)) return Fail("--angle takes a number of degrees");
  const ObjectID id = session->Add(AKClassID(line.Positional()[1].c_str()), line.Value("args", "-default"),
                                   {{bounds[0], bounds[1], bounds[2], bounds[3]}, degrees * kDegToRad}, &error);
  if (id == kNoObjectID || !SetAll(session.get(), id, line.Values("set"), &error)) return Fail(error);
  if (!session->Save(false, &error)) return Fail(error);
  std::printf("%zu\n", session->Doc().NumberOf(id));
  return 0;
}

int RunList(std::vector<std::string> const& words) {
  CommandLine line({}, {"all"});
  std::string error;
  if (!line.Parse(words, 1, 1, &error)) return Fail(error);
  const auto document = ReadDocument(line.Positional()[0], &error);
  if (!document) return Fail(error);
  std::fputs((line.Has("all") ? FullListing(*document) : ShortListing(*document)).c_str(), stdout);
  return 0;
}

int RunGet(std::vector<std::string> const& words) {
  CommandLine line({}, {});
  std::string error;
  Target target;
  if (!line.Parse(words, 2, 3, &error)) return Fail(error);
  if (!Find(line.Positional()[0], line.Positional()[1], &target, &error)) return Fail(error);
  const AKDictionary properties = PropertiesOf(target.Object());
  if (line.Positional().size() == 2) {
    properties.ForEach(
        [](AKString const& key, AKValue const& value) { std::printf("%s=%s\n", key.CStr(), TextOf(value).c_str()); });
    return 0;
  }
  std::string const& path = line.Positional()[2];
  if (!properties.ContainsKey(AKString(path))) return Fail("there is no property \"" + path + "\"");
  std::printf("%s\n", TextOf(properties.GetValue(AKString(path))).c_str());
  return 0;
}

int RunSet(std::vector<std::string> const& words) {
  CommandLine line({}, {});
  std::string error;
  Target target;
  if (!line.Parse(words, 3, 1000, &error)) return Fail(error);
  std::vector<std::string> const& all = line.Positional();
  if (!Find(all[0], all[1], &target, &error)) return Fail(error);
  if (!SetAll(target.session.get(), target.id, {all.begin() + 2, all.end()}, &error)) return Fail(error);
  return target.session->Save(false, &error) ? 0 : Fail(error);
}

int RunDraw(std::vector<std::string> const& words) {
  CommandLine line({"scale"}, {});
  std::string error;
  double scale = 1;
  if (!line.Parse(words, 2, 2, &error) || !ParseScale(line, &scale, &error)) return Fail(error);
  std::string const& target = line.Positional()[1];
  PictureKind kind{};
  if (!PictureKindOf(target, &kind)) return Fail("\"" + target + "\" is no name of a .png, .pdf or .svg file");
  const auto document = ReadDocument(line.Positional()[0], &error);
  if (!document) return Fail(error);
  std::vector<unsigned char> picture;
  if (!RenderPicture(*document, kind, scale, &picture, &error)) return Fail(error);
  return ReplaceFile(target, picture.data(), picture.size(), &error) ? 0 : Fail(error);
}

}  // namespace

const Command kNewCommand = {"new", "make an empty document",
                             "usage: objecthost new FILE [--size W,H] [--background R,G,B]\n\n"
                             "Makes an empty document with a page of W by H units (640,480) and an opaque\n"
                             "background (255,255,255). An existing file is replaced.\n",
                             &RunNew};

const Command kAddCommand = {
    "add", "add an object to a document",
    "usage: objecthost add FILE CLASS [--args TEXT] [--bounds X0,Y0,X1,Y1] [--angle DEGREES]\n"
    "                  [--set NAME=VALUE]...\n\n"
    "Adds an object of a class (\"stdRect\" is the rectangle) in front of the others and prints its\n"
    "number. TEXT (\"-default\") is what the class is initialised with. Bounds are 0,0,100,100 unless\n"
    "given; --set is what \"set\" takes.\n",
    &RunAdd};

const Command kListCommand = {"list", "list the objects of a document",
                              "usage: objecthost list FILE [--all]\n\n"
                              "One line an object: number, class, bounds, angle in degrees, and the properties of its\n"
                              "class. With --all every property, to seven digits.\n",
                              &RunList};

const Command kGetCommand = {
    "get", "print properties of an object",
    "usage: objecthost get FILE NUMBER [NAME]\n\n"
    "Prints all properties as NAME=VALUE, or the value of one. NAME may lead into a property:\n"
    "Pen.Brush.Color.\n",
    &RunGet};

const Command kSetCommand = {
    "set", "change properties of an object",
    "usage: objecthost set FILE NUMBER NAME=VALUE...\n\n"
    "  Rounding=0.4                    a property of the rectangle's class, taken as 0 to 1\n"
    "  Bounds=\"(10;10;110;60)\"         corners x0, y0, x1, y1; y points up\n"
    "  Angle=30                        degrees about the centre\n"
    "  Brush.Style=Solid               None, Solid, Pattern, LinearGradient, RadialGradient\n"
    "  Brush.Color=\"(255;0;0;128)\"     red, green, blue, alpha\n"
    "  Pen.Size=3  Pen.SizeMode=Relative  Pen.Brush.Color=\"(0;0;0;255)\"\n\n"
    "A pen or brush of style None has no other properties until it has another style. Nothing is\n"
    "changed unless every value can be taken.\n",
    &RunSet};

const Command kDrawCommand = {"draw", "draw a document into a PNG, PDF or SVG file",
                              "usage: objecthost draw FILE PICTURE [--scale S]\n\n"
                              "Draws the page with its background into a file whose name ends in .png, .pdf or .svg,\n"
                              "S pixels or points a unit (1).\n",
                              &RunDraw};

}  // namespace host

#include "host/gallery/DemoScene.h"

#include <cstdio>

#include "host/model/ObjectProperties.h"
#include "host/panels/Inspector.h"
#include "host/terminal/Output.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "kit/geometry/AGConstants.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

namespace host {
namespace {

const AKClassID kRectangle("stdRect");

struct SceneItem {
  AGRect bounds;
  double degrees;
  const char* rounding;  // as given to the property, out of range included
  double expected;       // what the rectangle must make of it
  AGColor fill;
  double penSize;
  AGColor stroke;
};

// Rows from the top: plain curvatures; turned ones; values out of range; translucent ones over each other.
constexpr SceneItem kItems[] = {
    {{30, 360, 130, 450}, 0, "0", 0, {70, 130, 180}, 1, {20, 40, 60}},
    {{150, 360, 250, 450}, 0, "0.02", 0.02, {60, 160, 120}, 1, {20, 40, 60}},
    {{270, 360, 370, 450}, 0, "0.021", 0.021, {60, 160, 120}, 2, {20, 40, 60}},
    {{390, 360, 490, 450}, 0, "0.25", 0.25, {200, 170, 60}, 3, {90, 60, 10}},
    {{510, 360, 610, 450}, 0, "0.5", 0.5, {210, 110, 60}, 4, {90, 40, 10}},
    {{30, 230, 130, 320}, 0, "1", 1, {180, 70, 90}, 6, {80, 20, 30}},
    {{155, 240, 245, 310}, 15, "0.25", 0.25, {110, 90, 170}, 2, {40, 30, 80}},
    {{275, 240, 365, 310}, 45, "0.5", 0.5, {110, 90, 170}, 2, {40, 30, 80}},
    {{395, 240, 485, 310}, 90, "1", 1, {110, 90, 170}, 2, {40, 30, 80}},
    {{515, 240, 605, 310}, -120, "0", 0, {110, 90, 170}, 2, {40, 30, 80}},
    {{30, 110, 130, 200}, 0, "-3", 0, {120, 120, 120}, 0.5, {0, 0, 0}},
    {{150, 110, 250, 200}, 0, "7.5", 1, {120, 120, 120}, 0.5, {0, 0, 0}},
    {{290, 60, 450, 180}, 10, "0.5", 0.5, {220, 60, 60, 128}, 8, {120, 0, 0, 160}},
    {{370, 80, 530, 200}, -20, "0.25", 0.25, {60, 180, 80, 128}, 12, {0, 90, 20, 160}},
    {{440, 30, 600, 150}, 30, "1", 1, {60, 90, 220, 128}, 0, {0, 0, 0}},
};

// One rectangle that is rounded by the slider of its inspector panel instead.
constexpr SceneItem kInspected = {{60, 20, 220, 90}, 5, "0", 0, {240, 240, 210}, 3, {60, 60, 60}};
constexpr unsigned int kNumberField = 1;
constexpr unsigned int kSlider = 2;

double RoundingOf(const DocumentSession& session, ObjectID id) {
  return AKValueGetasFloat64(PropertiesOf(*session.Doc().Find(id)).GetValue("Rounding"), false);
}

Result<ObjectID> AddItem(DocumentSession* session, const SceneItem& item) {
  const auto added = session->Objects().Add(kRectangle, "-default", {item.bounds, item.degrees * kDegToRad});
  if (!added) return added.Why();
  const ObjectID id = *added;
  AGBrush brush;
  AGPen pen;
  brush.SetStyleSolid(item.fill);
  pen.SetStyleSolid(item.stroke, item.penSize, kAGPenSizeModeAbsolute);
  if (const auto done = session->Objects().SetBrush({id}, brush); !done) return done.Why();
  if (const auto done = session->Objects().SetPen({id}, pen); !done) return done.Why();
  if (const auto done = session->Objects().SetProperties({id}, {{"Rounding", item.rounding}}); !done) return done.Why();
  if (RoundingOf(*session, id) == item.expected) return id;
  return Problem(N_("a Rounding of %s became %s"), {item.rounding, std::to_string(RoundingOf(*session, id))});
}

// The name that the rectangle gives to the change, in the user's language.
std::string ExpectedActionName() {
  Localisation& localisation = Localisation::Instance();
  localisation.SetDomain("StdRectangle");
  return DisplayText(AKString(localisation.ForBundle("Change Rectangle Curvature")));
}

// Moves the slider, out of range at first, and checks that object, field and slider agree.
Result<> UseInspector(DocumentSession* session, ObjectID id) {
  Inspector inspector;
  if (const auto done = inspector.Open(session, {id}); !done) return done.Why();
  if (const auto done = inspector.Fill(); !done) return done.Why();
  const struct {
    unsigned int control;
    double value;
    double expected;
  } steps[] = {{kSlider, 1.7, 1}, {kNumberField, 0.75, 0.75}};
  for (const auto& step : steps) {
    std::string actionName;
    if (const auto done = inspector.Change(step.control, step.value, &actionName); !done) return done.Why();
    const double field = inspector.Wrapper().GetValueAsFloat64(kNumberField);
    const double slider = inspector.Wrapper().GetValueAsFloat64(kSlider);
    const double rounding = RoundingOf(*session, id);
    Output::Print("  control %u set to %g: the rectangle's curvature is %g, \"%s\"\n", step.control, step.value,
                  rounding, actionName.c_str());
    if (rounding != step.expected || field != step.expected || slider != step.expected ||
        actionName != ExpectedActionName() || session->Steps().Known().UndoName() != actionName) {
      return Problem(N_("the inspector panel and the rectangle do not agree"));
    }
  }
  return {};
}

}  // namespace

Result<std::unique_ptr<DocumentSession>> MakeDemoScene() {
  auto document = std::make_unique<Document>(AGSize{640, 480});
  document->SetPage(document->Page(), AGColor(250, 250, 246));
  auto session = std::make_unique<DocumentSession>(std::move(document));
  for (const SceneItem& item : kItems) {
    if (const auto added = AddItem(session.get(), item); !added) return added.Why();
  }
  const auto inspected = AddItem(session.get(), kInspected);
  if (!inspected) return inspected.Why();
  Output::Print("Made %zu rectangles. The last one is rounded through its inspector panel:\n",
                session->Doc().ObjectCount());
  if (const auto done = UseInspector(session.get(), *inspected); !done) return done.Why();
  return session;
}

}  // namespace host

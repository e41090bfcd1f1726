// What a panel says of itself.
#include "host/validator/Controls.h"

namespace host::validator {
namespace {

struct Box {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  bool Overlaps(const Box& other) const { return x0 < other.x1 && other.x0 < x1 && y0 < other.y1 && other.y0 < y1; }
};

Box BoxOf(const HostControl& control) {
  Box box;
  control.GetBounds(&box.x0, &box.y0, &box.x1, &box.y1);
  return box;
}

std::string NameOf(const HostControl& control) {
  const Box box = BoxOf(control);
  return "control " + std::to_string(control.ID()) + " (" + InfoOf(control.Type()).name + ") at (" +
         std::to_string(box.x0) + ", " + std::to_string(box.y0) + ") to (" + std::to_string(box.x1) + ", " +
         std::to_string(box.y1) + ")";
}

void ForEachControl(Trial& trial, const std::function<void(HostPanel& panel, const HostControl& control)>& f) {
  ForEachPanel(trial, [&](const ClassCalls& cls, HostPanel& panel) {
    const Instance object = cls.Make();
    Fill(trial, cls, panel, object);  // which may give titles and items, and move controls
    trial.Do("look at the controls of the panel" + cls.Of());
    for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) f(panel, panel.ControlAt(i));
  });
}

void Understood(Trial& trial) {
  ForEachControl(trial, [&](HostPanel&, const HostControl& control) {
    const std::string complaint = control.Complaint().CStr();
    trial.Expect(complaint.empty(), "a description as docs/abi.md has it",
                 NameOf(control) + ": not understood: " + complaint);
    trial.Expect(control.Type() != ControlType::kUnknown, "a type of control", NameOf(control) + " has none");
  });
}

void Inside(Trial& trial) {
  ForEachControl(trial, [&](HostPanel& panel, const HostControl& control) {
    int width = 0;
    int height = 0;
    panel.GetPanelSize(&width, &height);
    const Box box = BoxOf(control);
    const bool isInside = box.x0 >= 0 && box.y0 >= 0 && (width == 0 || box.x1 <= width) && box.y1 <= height;
    trial.Expect(isInside, "controls within the panel of " + std::to_string(width) + " by " + std::to_string(height),
                 NameOf(control));
  });
}

void Sizes(Trial& trial) {
  ForEachControl(trial, [&](HostPanel&, const HostControl& control) {
    const Box box = BoxOf(control);
    trial.Expect(box.x1 > box.x0 && box.y1 > box.y0, "a width and a height", NameOf(control));
  });
}

void Apart(Trial& trial) {
  ForEachControl(trial, [&](HostPanel& panel, const HostControl& control) {
    for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) {
      const HostControl& other = panel.ControlAt(i);
      if (&other == &control || !other.IsVisible() || !control.IsVisible()) continue;
      trial.Expect(!BoxOf(control).Overlaps(BoxOf(other)), "controls beside each other",
                   NameOf(control) + " overlaps " + NameOf(other));
    }
  });
}

void IDs(Trial& trial) {
  ForEachControl(trial, [&](HostPanel& panel, const HostControl& control) {
    if (!InfoOf(control.Type()).hasValue && control.Type() != ControlType::kButton) return;
    const HostControl* found = HostControl::Of(panel.GetController(control.ID()));
    trial.Expect(found == &control, "an ID of its own for each control that can be used",
                 NameOf(control) + " has that of another one");
  });
}

void Ranges(Trial& trial) {
  ForEachControl(trial, [&](HostPanel&, const HostControl& control) {
    double least = 0;
    double most = 0;
    control.GetRange(&least, &most);
    const bool hasRange = control.GetProperty(kAKGUIPropertyHasRange) != 0;
    trial.Expect(!hasRange || least < most, "a range from the least to the most",
                 NameOf(control) + " from " + std::to_string(least) + " to " + std::to_string(most));
  });
}

void Texts(Trial& trial) {
  ForEachControl(trial, [&](HostPanel&, const HostControl& control) {
    const ControlType type = control.Type();
    const bool needsTitle =
        type == ControlType::kStaticText || type == ControlType::kCheckBox || type == ControlType::kButton;
    trial.Expect(!needsTitle || !control.GetTitle().IsEmpty(), "a title for what shows one", NameOf(control));
    trial.Expect(type != ControlType::kPopUp || control.GetMenuItemCount() != 0, "items in a menu", NameOf(control));
  });
}

}  // namespace

std::vector<Check> PanelChecks() {
  return {
      {"panel-understood", "The panel's description is understood by the host.", 1, &Understood},
      {"panel-inside", "The controls lie within the panel, where users see them.", 1, &Inside},
      {"panel-sizes", "Each control has a size.", 1, &Sizes},
      {"panel-apart", "No control covers another one.", 1, &Apart},
      {"panel-ids", "Controls that can be used have IDs of their own, by which events name them.", 1, &IDs},
      {"panel-ranges", "Ranges run from the least to the most.", 1, &Ranges},
      {"panel-texts", "Labels, check boxes and buttons have titles, and menus items.", 1, &Texts},
  };
}

}  // namespace host::validator

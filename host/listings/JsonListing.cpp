#include "host/listings/JsonListing.h"

#include <unordered_map>
#include <vector>

#include "host/listings/JsonWriter.h"
#include "host/listings/MethodName.h"
#include "host/model/ObjectProperties.h"
#include "host/text/DisplayText.h"
#include "kit/geometry/AGConstants.h"

namespace host {
namespace {

void WriteNumbers(JsonWriter* json, std::string_view name, const std::vector<double>& numbers) {
  json->Key(name);
  json->BeginArray();
  for (const double number : numbers) json->Number(number);
  json->EndArray();
}

void WriteColor(JsonWriter* json, std::string_view name, AGColor color) {
  WriteNumbers(json, name,
               {static_cast<double>(color.Red()), static_cast<double>(color.Green()), static_cast<double>(color.Blue()),
                static_cast<double>(color.Alpha())});
}

void WriteProperties(JsonWriter* json, const AKDictionary& properties) {
  json->BeginObject();
  properties.ForEach([json](const AKString& key, const AKValue& value) {
    json->Key(DisplayText(key));
    json->Value(value);
  });
  json->EndObject();
}

void WritePage(JsonWriter* json, const Document& document) {
  json->Key("page");
  json->BeginObject();
  json->Number("width", document.Page().width);
  json->Number("height", document.Page().height);
  WriteColor(json, "background", document.Background());
  json->String("unit", NameOf(document.Aids().unit));
  json->Number("grid", document.Aids().gridStep);
  WriteNumbers(json, "verticalGuides", document.Aids().verticalGuides);
  WriteNumbers(json, "horizontalGuides", document.Aids().horizontalGuides);
  json->EndObject();
}

using GroupNumbers = std::unordered_map<GroupID, std::size_t>;

GroupNumbers NumbersOfGroups(const Document& document) {
  GroupNumbers numbers;
  for (const GroupID group : document.GroupsInOrder()) numbers.emplace(group, numbers.size());
  return numbers;
}

void WriteLabel(JsonWriter* json, const ObjectLabel* label) {
  json->Key("label");
  if (label == nullptr) return json->Null();
  json->BeginObject();
  json->String("text", label->text);
  json->String("font", label->font);
  json->Number("size", label->size);
  json->Bool("bold", label->bold);
  json->Bool("italic", label->italic);
  WriteColor(json, "color", label->color);
  json->String("align", NameOf(label->across));
  json->String("valign", NameOf(label->down));
  json->String("direction", NameOf(label->direction));
  json->EndObject();
}

void WriteMarks(JsonWriter* json, const ObjectMarks& marks, const GroupNumbers& groups) {
  json->Bool("hidden", marks.hidden);
  json->Bool("locked", marks.locked);
  json->Key("groups");
  json->BeginArray();
  for (const GroupID group : marks.groups) json->Integer(static_cast<long long>(groups.at(group)));
  json->EndArray();
  json->Number("opacity", marks.look.opacity * 100);
  json->Bool("flippedHorizontally", marks.look.flippedX);
  json->Bool("flippedVertically", marks.look.flippedY);
  WriteNumbers(json, "dashes", marks.look.dashes);
  WriteLabel(json, marks.label.get());
}

void WriteObject(JsonWriter* json, const DocumentSession& session, const DocumentObject& object, std::size_t number,
                 const GroupNumbers& groups) {
  json->BeginObject();
  json->Integer("number", static_cast<long long>(number));
  json->String("class", object.classID.chars);
  json->Bool("placeholder", object.IsPlaceholder());
  json->Bool("selected", session.Selection().Contains(object.id));
  WriteNumbers(json, "bounds", {object.bounds.x0, object.bounds.y0, object.bounds.x1, object.bounds.y1});
  json->Number("angle", object.angle * kRadToDeg);
  WriteMarks(json, object.marks, groups);
  json->Key("properties");
  WriteProperties(json, PropertiesOf(object));
  json->EndObject();
}

std::string JsonOf(const DocumentSession& session, bool withObjects, const ListedObjects& listed) {
  JsonWriter json;
  std::size_t number = 0;
  std::size_t layerNumber = 0;
  const GroupNumbers groups = NumbersOfGroups(session.Doc());
  json.BeginObject();
  WritePage(&json, session.Doc());
  json.Key("layers");
  json.BeginArray();
  for (const Layer* layer : session.Doc().Layers()) {
    json.BeginObject();
    json.Integer("number", static_cast<long long>(layerNumber++));
    json.String("name", layer->settings.name);
    json.Bool("visible", layer->settings.visible);
    json.Bool("locked", layer->settings.locked);
    json.Bool("active", layer->id == session.Layers().Active());
    if (withObjects) {
      json.Key("objects");
      json.BeginArray();
      layer->objects.ForEach([&](const DocumentObject& object) {
        const std::size_t own = number++;
        if (!listed || listed->contains(object.id)) WriteObject(&json, session, object, own, groups);
      });
      json.EndArray();
    } else {
      json.Integer("objects", static_cast<long long>(layer->objects.Count()));
    }
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  return json.Line();
}

void WriteControlValue(JsonWriter* json, const HostControl& control) {
  json->Key("value");
  switch (control.Type()) {
    case ControlType::kColor: {
      const AGColor color = control.GetValueAsAGColor();
      json->BeginArray();
      for (const unsigned int part : {color.Red(), color.Green(), color.Blue(), color.Alpha()}) json->Integer(part);
      json->EndArray();
      break;
    }
    case ControlType::kCheckBox:
      json->Bool(control.GetValueAsBool());
      break;
    case ControlType::kEditText:
      json->String(DisplayText(control.GetValueAsString()));
      break;
    default:
      json->Number(control.GetValueAsFloat64());
  }
}

// The inspector that shows the panel tells what differs between its objects; null for a panel that nobody shows.
void WriteControl(JsonWriter* json, const HostControl& control, const Inspector* inspector) {
  int x0 = 0;
  int y0 = 0;
  int x1 = 0;
  int y1 = 0;
  control.GetBounds(&x0, &y0, &x1, &y1);
  json->BeginObject();
  json->Integer("id", control.ID());
  json->String("type", InfoOf(control.Type()).name);
  json->String("title", DisplayText(control.GetTitle()));
  json->Integer("x", x0);
  json->Integer("y", y0);
  json->Integer("width", x1 - x0);
  json->Integer("height", y1 - y0);
  json->Bool("visible", control.IsVisible());
  json->Bool("enabled", control.IsEnabled());
  if (inspector != nullptr) json->Bool("mixed", inspector->IsMixed(control.ID()));
  json->String("shown", DisplayText(control.DisplayedValue()));
  if (control.GetProperty(kAKGUIPropertyHasValue) != 0) WriteControlValue(json, control);
  if (control.GetProperty(kAKGUIPropertyHasRange) != 0) {
    double low = 0;
    double high = 0;
    control.GetRange(&low, &high);
    WriteNumbers(json, "range", {low, high});
  }
  if (control.GetMenuItemCount() != 0) {
    json->Key("items");
    json->BeginArray();
    for (unsigned int i = 0; i < control.GetMenuItemCount(); ++i) {
      json->String(DisplayText(control.GetMenuItemAtIndex(i)));
    }
    json->EndArray();
  }
  json->EndObject();
}

void WritePanel(JsonWriter* json, const HostPanel& panel, const Inspector* inspector) {
  int width = 0;
  int height = 0;
  panel.GetPanelSize(&width, &height);
  json->BeginObject();
  json->String("title", DisplayText(panel.GetPanelTitle()));
  json->Integer("width", width);
  json->Integer("height", height);
  json->Bool("multiple", panel.AllowsMultipleSelection());
  json->Key("controls");
  json->BeginArray();
  for (unsigned int i = 0; i < panel.GetControllerCount(); ++i) WriteControl(json, panel.ControlAt(i), inspector);
  json->EndArray();
  json->EndObject();
}

void WriteSlots(JsonWriter* json, const AKClass& cls) {
  json->Key("slots");
  json->BeginArray();
  for (unsigned int i = 0; i < kAKMethodCount; ++i) {
    const AKMethodSlot& slot = cls.methods[i];
    if (slot.function == 0) continue;
    json->BeginObject();
    json->Integer("slot", i);
    json->String("method", MethodName(i));
    json->Bool("virtual", (slot.function & 1) != 0);
    json->Integer("adjustment", slot.adjustment);
    json->EndObject();
  }
  json->EndArray();
}

void WriteClass(JsonWriter* json, const RegisteredClass& entry) {
  const AKClass& cls = *entry.record;
  json->BeginObject();
  json->String("id", cls.classID.chars);
  json->String("parent", cls.parentClassID.chars);
  json->String("further", cls.furtherClassID.chars);
  json->String("name", DisplayText(DisplayName(cls)));
  json->String("comments", DisplayText(cls.comments));
  json->Integer("flags", cls.flags);
  json->Integer("instance", cls.instanceSize);
  WriteSlots(json, cls);
  if (const HostPanel* panel = HostPanel::Of(entry.panel.get())) {
    json->Key("panel");
    WritePanel(json, *panel, nullptr);
  }
  json->EndObject();
}

}  // namespace

std::string JsonOfDocument(const DocumentSession& session, const ListedObjects& listed) {
  return JsonOf(session, true, listed);
}
std::string JsonOfLayers(const DocumentSession& session) { return JsonOf(session, false, std::nullopt); }

std::string JsonOfProperties(const AKDictionary& properties) {
  JsonWriter json;
  WriteProperties(&json, properties);
  return json.Line();
}

std::string JsonOfValue(const AKValue& value) {
  JsonWriter json;
  json.Value(value);
  return json.Line();
}

std::string JsonOfPanel(const Inspector& inspector) {
  JsonWriter json;
  WritePanel(&json, inspector.Panel(), &inspector);
  return json.Line();
}

std::string JsonOfBundle(const Bundle& bundle) {
  JsonWriter json;
  json.BeginObject();
  json.String("path", bundle.Path());
  json.Key("classes");
  json.BeginArray();
  for (const RegisteredClass* entry : bundle.Classes()) WriteClass(&json, *entry);
  json.EndArray();
  json.EndObject();
  return json.Line();
}

std::string JsonOfHistory(const DocumentSession& session) {
  const History& steps = session.Steps().Known();
  JsonWriter json;
  json.BeginObject();
  json.String("undo", session.Steps().UndoTitle());
  json.String("redo", session.Steps().RedoTitle());
  json.Integer("position", static_cast<long long>(steps.Position()));
  json.Key("steps");
  json.BeginArray();
  for (std::size_t i = 0; i < steps.Count(); ++i) json.String(steps.NameAt(i));
  json.EndArray();
  json.Bool("unsaved", session.File().HasUnsavedChanges());
  json.EndObject();
  return json.Line();
}

}  // namespace host

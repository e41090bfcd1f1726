// The actions of the window's menus.
#include <giomm/simpleaction.h>
#include <gtkmm/text.h>

#include <algorithm>
#include <string_view>

#include "host/text/Localisation.h"
#include "host/window/EditorApplication.h"
#include "host/window/EditorWindow.h"
#include "host/window/LastStyle.h"
#include "host/window/SlideStep.h"
#include "host/window/Toggle.h"
#include "host/window/dialogs/GalleryWindow.h"
#include "host/window/dialogs/HelpWindows.h"
#include "host/window/dialogs/PrintDialog.h"
#include "host/window/dialogs/SheetSettings.h"
#include "host/window/widgets/TypedField.h"

namespace host {
namespace {

constexpr double kZoomStep = 1.25;
constexpr double kPasteOffset = 10;

constexpr char kSelectAllText[] = "selection.select-all";

// A field that is being typed in takes what is meant for text. False when none is. The toolkit's own action to select
// all stays disabled after a program set the text.
bool GiveToText(Gtk::Window& window, const char* action) {
  auto* const text = dynamic_cast<Gtk::Text*>(window.get_focus());
  if (text == nullptr) return false;
  if (action == std::string_view(kSelectAllText)) {
    text->select_region(0, -1);
    return true;
  }
  gtk_widget_activate_action(GTK_WIDGET(text->gobj()), action, nullptr);
  return true;
}

}  // namespace

void EditorWindow::AddCommand(const char* name, const std::function<void()>& command) {
  add_action(name, [this, command] {
    FinishTyping();
    command();
  });
}

void EditorWindow::AddTextCommand(const char* name, const char* textAction, const std::function<void()>& command) {
  add_action(name, [this, textAction, command] {
    SlideStep::End();
    if (!GiveToText(*this, textAction)) command();
  });
}

// Undo belongs to the text only as long as it is not taken over into the document.
void EditorWindow::AddUndo(const char* name, const char* textAction, const std::function<void()>& command) {
  add_action(name, [this, textAction, command] {
    SlideStep::End();
    const TypedField* const field = TypedField::Focused(*this);
    const bool documents = field != nullptr && !field->IsBeingTyped();
    if (documents || !GiveToText(*this, textAction)) command();
  });
}

void EditorWindow::FinishTyping() {
  TypedField* const field = TypedField::Focused(*this);
  if (field != nullptr && field->IsBeingTyped()) field->TakeOver();
  SlideStep::End();
}

void EditorWindow::AddActions() {
  AddFileActions();
  AddEditActions();
  AddViewActions();
}

void EditorWindow::AddFileActions() {
  AddCommand("open", [this] { ChooseDocument(); });
  AddCommand("save", [this] { Save([] {}); });
  AddCommand("save-as", [this] { SaveAs([] {}); });
  AddCommand("export", [this] { Export(); });
  AddCommand("import", [this] { ChooseImport(); });
  AddCommand("page-setup", [this] { ChooseSheet(*this, session_->Doc().Page()); });
  AddCommand("print", [this] { Print(); });
  AddCommand("print-preview", [this] { Do(PreviewPrint(*this, session_->Doc())); });
  AddCommand("close", [this] { close(); });
  AddCommand("load-bundle", [this] {
    ChooseFile(Tr("Load Bundle"), {{Tr("Bundles"), "*.so"}},
               [this](const std::string& path) { OpenDropped(path, {}); });
  });
}

void EditorWindow::Do(const Result<>& done) {
  if (!done) ShowProblem(done.Why(), Gtk::MessageType::WARNING);
}

void EditorWindow::AddEdit(const char* name, Edit edit) {
  AddCommand(name, [this, edit = std::move(edit)] { Do(edit(session_->Selection().IDs())); });
}

void EditorWindow::AddEditActions() {
  AddUndo("undo", "text.undo", [this] { session_->Steps().Undo(); });
  AddUndo("redo", "text.redo", [this] { session_->Steps().Redo(); });
  AddTextCommand("cut", "clipboard.cut", [this] { CopySelection(true); });
  AddTextCommand("copy", "clipboard.copy", [this] { CopySelection(false); });
  AddTextCommand("paste", "clipboard.paste", [this] { PasteClipboard(PastePlace::kAside); });
  AddCommand("paste-in-place", [this] { PasteClipboard(PastePlace::kInPlace); });
  AddCommand("paste-at-pointer", [this] { PasteClipboard(PastePlace::kAtPointer); });
  AddCommand("find", [this] { ShowFind(); });
  AddTextCommand("select-all", kSelectAllText, [this] { session_->Selection().SelectAll(); });
  AddCommand("select-none", [this] { session_->Selection().SelectNone(); });
  AddCommand("select-below", [this] { canvas_.SelectBelow(); });
  AddCommand("copy-style",
             [this] { EditorApplication::CopiedStyle() = StyleOf(session_->Doc(), session_->Selection().IDs()); });
  AddEdit("paste-style", [this](const ObjectIDs& ids) {
    const auto& style = EditorApplication::CopiedStyle();
    if (!style) return Result<>();
    auto done = session_->Objects().SetStyle(ids, *style);
    NoteStyle(*session_);
    return done;
  });
  const std::pair<const char*, Likeness> likenesses[] = {{"select-same-fill", Likeness::kFill},
                                                         {"select-same-outline", Likeness::kStroke},
                                                         {"select-same-kind", Likeness::kClass}};
  for (const auto& [name, likeness] : likenesses) {
    AddCommand(name, [this, likeness = likeness] {
      SessionSelection& selection = session_->Selection();
      if (!selection.IsEmpty()) selection.Select(selection.Alike(selection.IDs().front(), likeness));
    });
  }
  AddEdit("delete", [this](const ObjectIDs& ids) { return session_->Objects().Delete(ids); });
  AddEdit("duplicate",
          [this](const ObjectIDs& ids) { return session_->Clipboard().Duplicate(ids, kPasteOffset, -kPasteOffset); });
  const std::pair<const char*, OrderChange> orders[] = {{"to-front", OrderChange::kToFront},
                                                        {"forward", OrderChange::kForward},
                                                        {"backward", OrderChange::kBackward},
                                                        {"to-back", OrderChange::kToBack}};
  for (const auto& [name, change] : orders) {
    AddEdit(name,
            [this, change = change](const ObjectIDs& ids) { return session_->Arrangement().ChangeOrder(ids, change); });
  }
  AddArrangeActions();
  AddMarkActions();
  AddCommand("add-layer", [this] { session_->Layers().Add(""); });
}

void EditorWindow::AddArrangeActions() {
  const std::pair<const char*, Alignment> alignments[] = {
      {"align-left", Alignment::kLeft}, {"align-center", Alignment::kCenter}, {"align-right", Alignment::kRight},
      {"align-top", Alignment::kTop},   {"align-middle", Alignment::kMiddle}, {"align-bottom", Alignment::kBottom}};
  for (const auto& [name, alignment] : alignments) {
    AddEdit(name, [this, alignment = alignment](const ObjectIDs& ids) {
      const bool isOne = !ids.empty() && session_->Selection().UnitOf(ids[0]).size() == ids.size();
      return session_->Arrangement().Align(ids, alignment, isOne ? AlignTo::kPage : alignTo_);
    });
  }
  const auto radio = std::make_shared<Glib::RefPtr<Gio::SimpleAction>>();
  *radio = add_action_radio_string(
      "align-to",
      [this, radio](const Glib::ustring& to) {
        alignTo_ = to == "page" ? AlignTo::kPage : to == "key" ? AlignTo::kKey : AlignTo::kObjects;
        (*radio)->change_state(to);
      },
      "objects");
  AddEdit("distribute-horizontally",
          [this](const ObjectIDs& ids) { return session_->Arrangement().Distribute(ids, Axis::kHorizontal); });
  AddEdit("distribute-vertically",
          [this](const ObjectIDs& ids) { return session_->Arrangement().Distribute(ids, Axis::kVertical); });
  const std::pair<const char*, Sides> matches[] = {
      {"match-width", Sides::kWidth}, {"match-height", Sides::kHeight}, {"match-size", Sides::kBoth}};
  for (const auto& [name, sides] : matches) {
    AddEdit(name, [this, sides = sides](const ObjectIDs& ids) { return session_->Arrangement().Match(ids, sides); });
  }
  AddEdit("flip-horizontally", [this](const ObjectIDs& ids) { return session_->Looks().Flip(ids, Axis::kHorizontal); });
  AddEdit("flip-vertically", [this](const ObjectIDs& ids) { return session_->Looks().Flip(ids, Axis::kVertical); });
  AddEdit("repeat", [this](const ObjectIDs& ids) { return session_->Objects().Repeat(ids); });
}

// What comes back is selected, so that it is seen.
void EditorWindow::AddMarkActions() {
  AddEdit("group", [this](const ObjectIDs& ids) { return session_->Marks().Group(ids); });
  AddEdit("ungroup", [this](const ObjectIDs& ids) { return session_->Marks().Ungroup(ids); });
  AddEdit("lock", [this](const ObjectIDs& ids) { return session_->Marks().SetLocked(ids, true); });
  AddEdit("hide", [this](const ObjectIDs& ids) { return session_->Marks().SetHidden(ids, true); });
  AddEdit("unlock-all", [this](const ObjectIDs&) -> Result<> {
    const ObjectIDs locked = session_->Marks().Locked();
    if (locked.empty()) return {};
    if (const auto done = session_->Marks().SetLocked(locked, false); !done) return done.Why();
    session_->Selection().Select(locked);
    return {};
  });
  AddEdit("show-all", [this](const ObjectIDs&) -> Result<> {
    const ObjectIDs hidden = session_->Marks().Hidden();
    if (hidden.empty()) return {};
    if (const auto done = session_->Marks().SetHidden(hidden, false); !done) return done.Why();
    session_->Selection().Select(hidden);
    return {};
  });
}

void EditorWindow::AddViewActions() {
  add_action("zoom-in", [this] { canvas_.ZoomBy(kZoomStep); });
  add_action("zoom-out", [this] { canvas_.ZoomBy(1 / kZoomStep); });
  add_action("zoom-50", [this] { canvas_.ZoomTo(0.5); });
  add_action("zoom-100", [this] { canvas_.ZoomTo(1); });
  add_action("zoom-200", [this] { canvas_.ZoomTo(2); });
  add_action("zoom-drawing", [this] { canvas_.ZoomToDrawing(); });
  add_action("zoom-fit", [this] { canvas_.ZoomToFit(); });
  add_action("zoom-selection", [this] { canvas_.ZoomToSelection(); });
  add_action("gallery", [this] { ShowGallery(*this); });
  add_action("shortcuts", [this] { ShowShortcuts(*this); });
  const auto applyRulers = [this](bool on) {
    horizontalRuler_.set_visible(on);
    verticalRuler_.set_visible(on);
    unit_.set_visible(on);
  };
  add_action(NewToggle("rulers", &WindowSettings::rulers, applyRulers));
  applyRulers(WindowSettings::Instance().rulers);
  AddAidActions();
}

void EditorWindow::AddAidActions() {
  const std::pair<const char*, bool WindowSettings::*> toggles[] = {{"grid", &WindowSettings::grid},
                                                                    {"snapping", &WindowSettings::snapping},
                                                                    {"snap", &WindowSettings::snap},
                                                                    {"snap-to-objects", &WindowSettings::snapToObjects},
                                                                    {"snap-to-guides", &WindowSettings::snapToGuides},
                                                                    {"guides", &WindowSettings::guides},
                                                                    {"lock-guides", &WindowSettings::guidesLocked}};
  for (const auto& [name, setting] : toggles) add_action(NewToggle(name, setting, [this](bool) { ApplyAids(); }));
  AddCommand("add-vertical-guide", [this] { canvas_.AddGuide(0); });
  AddCommand("add-horizontal-guide", [this] { canvas_.AddGuide(1); });
  AddCommand("next-guide", [this] { canvas_.ChooseGuide(false); });
  AddCommand("remove-guides", [this] {
    PageAids aids = session_->Doc().Aids();
    aids.verticalGuides.clear();
    aids.horizontalGuides.clear();
    Do(session_->SetAids(std::move(aids), Tr("Remove Guides")));
  });
  ApplyAids();
}

bool EditorWindow::IsOn(const char* toggle) {
  bool on = false;
  const auto action = std::dynamic_pointer_cast<Gio::SimpleAction>(lookup_action(toggle));
  if (action != nullptr) action->get_state(on);
  return on;
}

void EditorWindow::ApplyAids() {
  if (session_ == nullptr) return;
  const PageAids& aids = session_->Doc().Aids();
  SnapRules snap;
  if (IsOn("snapping")) {
    snap = {IsOn("snap") ? aids.gridStep : 0, IsOn("snap-to-objects"), IsOn("snap-to-guides") && IsOn("guides")};
  }
  canvas_.SetGrid(IsOn("grid") ? aids.gridStep : 0);
  canvas_.SetSnap(snap);
  canvas_.SetGuides(IsOn("guides"), IsOn("lock-guides"));
  horizontalRuler_.SetUnit(aids.unit);
  verticalRuler_.SetUnit(aids.unit);
  unit_.set_text(NameOf(aids.unit));
  for (const char* action : {"snap", "snap-to-objects", "snap-to-guides"}) SetEnabled(action, IsOn("snapping"));
  for (const char* action : {"add-vertical-guide", "add-horizontal-guide", "next-guide"}) {
    SetEnabled(action, IsOn("guides") && !IsOn("lock-guides"));
  }
}

// Asked of the toolkit itself, which makes nothing new for it: this is called for each change, memory or none.
void EditorWindow::SetEnabled(const char* action, bool enabled) {
  GAction* const found = g_action_map_lookup_action(G_ACTION_MAP(gobj()), action);
  if (G_IS_SIMPLE_ACTION(found)) g_simple_action_set_enabled(G_SIMPLE_ACTION(found), enabled ? TRUE : FALSE);
}

// Cut, copy, paste and undo stay enabled: a text field may want them.
void EditorWindow::UpdateActions() {
  UpdateTitle();
  const std::size_t count = session_->Selection().Count();
  for (const char* action : {"delete",
                             "duplicate",
                             "to-front",
                             "forward",
                             "backward",
                             "to-back",
                             "align-left",
                             "align-center",
                             "align-right",
                             "align-top",
                             "align-middle",
                             "align-bottom",
                             "select-none",
                             "zoom-selection",
                             "copy-style",
                             "paste-style",
                             "select-same-fill",
                             "select-same-outline",
                             "select-same-kind",
                             "lock",
                             "hide",
                             "flip-horizontally",
                             "flip-vertically",
                             "repeat"}) {
    SetEnabled(action, count > 0);
  }
  for (const char* action : {"match-width", "match-height", "match-size"}) SetEnabled(action, count > 1);
  const ObjectIDs& ids = session_->Selection().IDs();
  const std::size_t depth = session_->Selection().Entered().size();
  SetEnabled("group", count > 1 && session_->Selection().UnitOf(ids[0]).size() < count);
  SetEnabled("ungroup", std::any_of(ids.begin(), ids.end(), [this, depth](ObjectID id) {
               return session_->Doc().Find(id)->marks.groups.size() > depth;
             }));
  SetEnabled("distribute-horizontally", count > 2);
  SetEnabled("distribute-vertically", count > 2);
  if (const auto application = std::dynamic_pointer_cast<EditorApplication>(get_application())) {
    application->ShowUndoTitles(session_->Steps().UndoTitle(), session_->Steps().RedoTitle());
  }
  toolbar_.ShowSteps(session_->Steps());
}

}  // namespace host

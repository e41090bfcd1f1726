#include "host/window/EditorWindow.h"

#include <glibmm/main.h>
#include <gtkmm/droptarget.h>
#include <gtkmm/eventcontrollerkey.h>
#include <gtkmm/grid.h>
#include <gtkmm/popover.h>
#include <gtkmm/scrollbar.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/separator.h>

#include <algorithm>
#include <cstdio>

#include "host/Host.h"
#include "host/pictures/DocumentPicture.h"
#include "host/text/Localisation.h"
#include "host/window/EditorApplication.h"
#include "host/window/Menus.h"
#include "host/window/SlideStep.h"
#include "host/window/WindowSettings.h"
#include "host/window/dialogs/ProgressWindow.h"
#include "host/window/panels/Panels.h"
#include "host/window/panels/Section.h"
#include "host/window/widgets/Focus.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

constexpr int kPanelWidth = 260;
constexpr unsigned int kAutosaveSeconds = 5;

std::string FileName(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

bool IsPicture(const std::string& path) {
  PictureKind kind{};
  return PictureKindOf(path, &kind) && kind != PictureKind::kPDF;
}

}  // namespace

EditorWindow::EditorWindow(std::unique_ptr<DocumentSession> session)
    : zoom_(100 * ViewTransform::kMinZoom, 100 * ViewTransform::kMaxZoom, 10, 0, Tr("Zoom")) {
  set_default_size(WindowSettings::Instance().width, WindowSettings::Instance().height);
  if (WindowSettings::Instance().maximized) maximize();
  set_show_menubar(true);
  auto* const everything = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  everything->append(toolbar_);
  message_.set_show_close_button(true);
  GiveName(&message_, WithoutMnemonic(Tr("_Close")));  // so far all there is in it is that button
  message_.add_child(messageText_);
  messageText_.set_wrap(true);
  messageText_.set_selectable(true);
  message_.set_revealed(false);
  message_.signal_response().connect([this](int) { message_.set_revealed(false); });
  everything->append(message_);

  auto* const middle = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL);
  middle->append(tools_);
  paned_.set_start_child(*MakeCanvasArea());
  paned_.set_resize_start_child(true);
  paned_.set_shrink_start_child(false);
  paned_.set_end_child(*MakeSide());
  paned_.set_resize_end_child(false);
  paned_.set_shrink_end_child(false);
  SetName(&paned_, Tr("Panels"));
  RestorePanelWidth();
  middle->append(paned_);
  everything->append(*middle);
  everything->append(*MakeStatusLine());
  set_child(*everything);

  AddActions();
  AddDropTarget();
  AddBracketKeys();
  property_focus_widget().signal_changed().connect([this] {
    if (get_focus() != nullptr) return;
    Glib::signal_idle().connect_once(sigc::mem_fun(*this, &EditorWindow::FocusCanvas), Glib::PRIORITY_HIGH);
  });
  signal_map().connect([this] {
    for (Gtk::Widget* child = get_first_child(); child != nullptr; child = child->get_next_sibling()) {
      if (GTK_IS_POPOVER_MENU_BAR(child->gobj())) WatchMenus(child);
    }
  });
  UpdateClasses();
  SetSession(std::move(session));
  canvas_.grab_focus();
}

EditorWindow::~EditorWindow() { SetSession(nullptr); }

void EditorWindow::SetSession(std::unique_ptr<DocumentSession> session) {
  if (session_ != nullptr) FinishTyping();
  autosave_.disconnect();
  recovery_.reset();
  mark_.reset();
  labelEditor_.SetSession(nullptr);
  canvas_.SetSession(nullptr);
  for (const auto& panel : panels_) panel->SetSession(nullptr);
  if (session_ != nullptr) session_->RemoveObserver(this);
  session_ = std::move(session);
  if (session_ == nullptr) return;
  session_->AddObserver(this);
  Host::Instance().Sessions().MakeCurrent(*session_);
  recovery_ = std::make_unique<Recovery>(*session_, kAutosaveSeconds);
  autosave_ = Glib::signal_timeout().connect_seconds(
      [this] {
        recovery_->Update();
        return true;
      },
      1);
  recovery_->Update();  // a document that was recovered has unsaved changes already
  canvas_.SetSession(session_.get());
  labelEditor_.SetSession(session_.get());
  for (const auto& panel : panels_) panel->SetSession(session_.get());
  UpdateTitle();
  UpdateActions();
  ApplyAids();
  MarkOpen();
}

void EditorWindow::OnPathChanged() {
  UpdateTitle();
  MarkOpen();
}

// Windows of this program share none: the old mark goes before there is a new one.
void EditorWindow::MarkOpen() {
  const std::string& path = session_->File().Path();
  mark_.reset();
  mark_ = std::make_unique<OpenMark>(path);
  if (!mark_->WasOpen()) return;
  ShowProblem(Problem(N_("\"%s\" is open in another program, too: neither shows what the other changes"), {path}),
              Gtk::MessageType::WARNING);
}

void EditorWindow::RememberSize() {
  WindowSettings& settings = WindowSettings::Instance();
  get_default_size(settings.width, settings.height);
  settings.maximized = is_maximized();
  settings.panelWidth = paned_.get_end_child()->get_width();
  settings.Save();
}

void EditorWindow::KeepChanges() {
  if (recovery_ != nullptr) recovery_->UpdateNow();
}

void EditorWindow::KeepForRecovery() {
  RememberSize();
  FinishTyping();
  recovery_->Keep();
}

bool EditorWindow::IsUntouched() const {
  return session_->File().Path().empty() && session_->Steps().Known().Count() == 0;
}

void EditorWindow::ShowMessage(const std::string& text, Gtk::MessageType type) {
  messageText_.set_text(text);
  message_.set_message_type(type);
  message_.set_revealed(true);
}

void EditorWindow::ShowProblem(const Problem& problem, Gtk::MessageType type) {
  ShowMessage(problem.Translated(), type);
}

void EditorWindow::ShowSkipped(const std::vector<BundleSet::Skipped>& bundles) {
  std::string lines;
  for (const BundleSet::Skipped& bundle : bundles) {
    if (!lines.empty()) lines += '\n';
    lines += bundle.reason.Translated();
  }
  if (!lines.empty()) ShowMessage(lines, Gtk::MessageType::WARNING);
}

void EditorWindow::ShowNotice(Text text, const std::string& name) {
  ShowMessage(TrWith(text, name), Gtk::MessageType::INFO);
}

// They lie beside the canvas, whose points they tell in their own.
void EditorWindow::AddRulers() {
  for (Ruler* ruler : {&horizontalRuler_, &verticalRuler_}) {
    const bool isAbove = ruler == &horizontalRuler_;
    ruler->SignalPressed().connect([this, isAbove] { canvas_.PressRuler(isAbove ? 1 : 0); });
    ruler->SignalDragged().connect([this, isAbove, ruler](AGPoint point, Gdk::ModifierType state) {
      (isAbove ? point.y : point.x) -= isAbove ? ruler->get_height() : ruler->get_width();
      canvas_.DragRuler(point, state);
    });
    ruler->SignalReleased().connect([this] { canvas_.ReleaseRuler(); });
  }
  unit_.add_css_class("ruler");
  unit_.add_css_class("unit");
}

Gtk::Widget* EditorWindow::MakeCanvasArea() {
  auto* const grid = Gtk::make_managed<Gtk::Grid>();
  auto* const horizontal = Gtk::make_managed<Gtk::Scrollbar>(canvas_.Horizontal(), Gtk::Orientation::HORIZONTAL);
  auto* const vertical = Gtk::make_managed<Gtk::Scrollbar>(canvas_.Vertical(), Gtk::Orientation::VERTICAL);
  grid->attach(unit_, 0, 0);
  grid->attach(horizontalRuler_, 1, 0);
  grid->attach(verticalRuler_, 0, 1);
  grid->attach(labelEditor_, 1, 1);
  grid->attach(*vertical, 2, 1);
  grid->attach(*horizontal, 1, 2);
  AddRulers();
  canvas_.SignalViewChanged().connect([this] { UpdateZoom(); });
  canvas_.SignalProblem().connect([this](const Problem& problem) { ShowProblem(problem, Gtk::MessageType::WARNING); });
  labelEditor_.SignalProblem().connect(
      [this](const Problem& problem) { ShowProblem(problem, Gtk::MessageType::WARNING); });
  canvas_.SignalPointer().connect([this](const AGPoint& map) {
    horizontalRuler_.SetPointer(map);
    verticalRuler_.SetPointer(map);
    const LengthUnit unit = session_->Doc().Aids().unit;
    position_.set_text(LengthText(map.x, unit) + ", " + LengthText(map.y, unit));
  });
  return grid;
}

Gtk::Widget* EditorWindow::MakeStatusLine() {
  auto* const line = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 12);
  line->add_css_class("status");
  position_.set_xalign(0);
  position_.set_hexpand(true);
  line->append(position_);
  zoom_.HideButtons();
  zoom_.set_width_chars(5);
  zoom_.set_tooltip_text(Tr("Zoom"));
  zoom_.SignalChosen().connect([this](double percent) { canvas_.ZoomTo(percent / 100); });
  line->append(zoom_);
  line->append(*Gtk::make_managed<Gtk::Label>("%"));
  return line;
}

Gtk::Widget* EditorWindow::MakeSide() {
  auto* const side = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  auto* const scrolled = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  auto* const below = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL);
  AddPanels(scrolled, below);
  auto* const scroller = Gtk::make_managed<Gtk::ScrolledWindow>();
  scroller->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scroller->set_child(*scrolled);
  scroller->set_vexpand(true);
  scroller->set_focusable(false);
  side->append(*scroller);
  side->append(*Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::HORIZONTAL));
  side->append(*below);
  return side;
}

// The panels ask for what they had until they have it. Then the user may make them narrower.
void EditorWindow::RestorePanelWidth() {
  const WindowSettings& settings = WindowSettings::Instance();
  Gtk::Widget* const side = paned_.get_end_child();
  side->set_size_request(std::clamp(settings.panelWidth, kPanelWidth, std::max(kPanelWidth, settings.width / 2)), -1);
  const auto placed = std::make_shared<sigc::connection>();
  *placed = paned_.property_max_position().signal_changed().connect([this, side, placed] {
    placed->disconnect();
    Glib::signal_idle().connect_once([this, side] {
      paned_.set_position(paned_.get_position());
      side->set_size_request(kPanelWidth, -1);
    });
  });
}

void EditorWindow::AddPanels(Gtk::Box* scrolled, Gtk::Box* below) {
  for (NamedPanel& named : MakePanels()) {
    Gtk::Expander* const section = NewSection(named.name);
    section->add_css_class("panel-frame");
    section->set_child(*named.panel);
    named.panel->property_visible().signal_changed().connect(
        [section, panel = named.panel.get()] { ShowPart(*section, panel->get_visible()); });
    named.panel->SignalContent().connect([section, name = named.name](bool has) { OpenFor(section, name, has); });
    (named.stays ? below : scrolled)->append(*section);
    named.panel->SignalProblem().connect(
        [this](const Problem& problem) { ShowProblem(problem, Gtk::MessageType::WARNING); });
    panels_.push_back(std::move(named.panel));
  }
}

void EditorWindow::UpdateTitle() {
  const std::string name = session_->File().Path().empty() ? Tr("Untitled") : FileName(session_->File().Path());
  set_title((session_->File().HasUnsavedChanges() ? "• " : "") + name + " – objecthost");
}

void EditorWindow::UpdateZoom() {
  zoom_.Show(canvas_.View().Zoom() * 100);
  SetEnabled("zoom-in", canvas_.View().Zoom() < ViewTransform::kMaxZoom);
  SetEnabled("zoom-out", canvas_.View().Zoom() > ViewTransform::kMinZoom);
  horizontalRuler_.SetView(canvas_.View());
  verticalRuler_.SetView(canvas_.View());
}

void EditorWindow::AddDropTarget() {
  auto target = Gtk::DropTarget::create(GDK_TYPE_FILE_LIST, Gdk::DragAction::COPY);
  target->signal_drop().connect(
      [this](const Glib::ValueBase& value, double x, double y) {
        auto* list = static_cast<GSList*>(g_value_get_boxed(value.gobj()));
        for (; list != nullptr; list = list->next) {
          char* path = g_file_get_path(static_cast<GFile*>(list->data));
          if (path != nullptr) OpenDropped(path, PlaceOnCanvas(x, y));
          g_free(path);
        }
        return true;
      },
      false);
  add_controller(target);
}

// Keys that the menus' own shortcuts did not take.
void EditorWindow::AddBracketKeys() {
  auto keys = Gtk::EventControllerKey::create();
  keys->signal_key_pressed().connect(
      [this](guint value, guint keycode, Gdk::ModifierType state) {
        const char* const action = OrderActionOf(value, keycode, state);
        return action != nullptr && gtk_widget_activate_action(GTK_WIDGET(gobj()), action, nullptr);
      },
      false);
  add_controller(keys);
}

// A point of the window on the map.
AGPoint EditorWindow::PlaceOnCanvas(double x, double y) {
  AGPoint point;
  if (!translate_coordinates(canvas_, x, y, point.x, point.y)) return canvas_.MiddlePlace();
  return canvas_.View().ToMap(point);
}

void EditorWindow::OpenDropped(const std::string& path, const AGPoint& place) {
  const auto application = std::dynamic_pointer_cast<EditorApplication>(get_application());
  if (application == nullptr) return;
  if (path.ends_with(".so")) {
    application->LoadBundle(path, this);
  } else if (IsPicture(path)) {
    FinishTyping();
    ImportFile(path, place);
  } else {
    application->OpenDocument(path, this);
  }
}

// The menus are the toolkit's, which leaves the keys with them after one was closed.
void EditorWindow::WatchMenus(Gtk::Widget* part) {
  if (auto* const menu = dynamic_cast<Gtk::Popover*>(part)) {
    menu->signal_closed().connect([this] {
      // Before the next key, which may be meant for the canvas.
      Glib::signal_idle().connect_once(sigc::mem_fun(*this, &EditorWindow::LeaveMenus), Glib::PRIORITY_HIGH);
    });
    return;
  }
  for (Gtk::Widget* child = part->get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    WatchMenus(child);
  }
}

void EditorWindow::LeaveMenus() {
  Gtk::Widget* const focus = get_focus();
  if (focus != nullptr && focus->get_ancestor(GTK_TYPE_POPOVER_MENU_BAR) == nullptr) return;
  Gtk::Widget* const menu = focus == nullptr ? nullptr : focus->get_ancestor(GTK_TYPE_POPOVER);
  if (menu == nullptr || !menu->get_visible()) canvas_.grab_focus();  // else it is the next menu
}

// What had the focus is gone, and nothing else took it.
void EditorWindow::FocusCanvas() {
  if (get_focus() == nullptr) canvas_.grab_focus();
}

// Hiding ends the window: the application deletes it.
bool EditorWindow::on_close_request() {
  // An export works on the document until it has seen that it is to stop.
  if (ProgressWindow::IsAnyOpen()) {
    ProgressWindow::StopAll();
    Glib::signal_idle().connect_once([this] { close(); });
    return true;
  }
  AskToKeepChanges([this] {
    RememberSize();
    set_visible(false);
  });
  return true;
}

}  // namespace host

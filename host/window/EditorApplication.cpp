#include "host/window/EditorApplication.h"

#include <giomm/menu.h>
#include <glib-unix.h>
#include <glibmm/exceptionhandler.h>
#include <glibmm/main.h>
#include <gtkmm/aboutdialog.h>
#include <gtkmm/cssprovider.h>
#include <gtkmm/recentmanager.h>
#include <gtkmm/settings.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <new>

#include "host/Host.h"
#include "host/Version.h"
#include "host/storage/Recovery.h"
#include "host/text/Localisation.h"
#include "host/window/MemoryReserve.h"
#include "host/window/Menus.h"
#include "host/window/Toggle.h"

namespace host {
namespace {

constexpr AGSize kNewPage{600, 400};
constexpr char kDocumentExtension[] = ".akd";
constexpr int kMostRecent = 10;
constexpr char kIconName[] = "org.objecthost.Window";  // as the desktop calls the program

constexpr char kStyle[] = R"(
.canvas { background-color: mix(@theme_bg_color, @theme_fg_color, 0.12); }
.ruler { background-color: @theme_bg_color; }
.unit { font-size: 8pt; }
.tools { padding: 4px; }
.tools button { min-width: 24px; padding: 5px; }
.tool-name { font-size: smaller; }
.toolbar { padding: 2px 4px; }
.toolbar button { min-width: 20px; min-height: 20px; padding: 5px; }
.toolbar separator { margin: 4px 5px; }
.panel { padding: 6px 10px 12px 10px; }
.panel-frame > box > title { font-weight: bold; padding: 6px 6px 2px 6px; }
.inspector { padding-left: 0; }
.inspector > label { margin-left: 10px; }
.status { padding: 3px 10px; font-size: smaller; }
spinbutton { min-height: 0; }
.panel spinbutton > text, .panel spinbutton > button { min-height: 24px; padding-top: 0; padding-bottom: 0; }
.panel dropdown > button, .panel colorbutton > button { min-height: 24px; padding-top: 1px; padding-bottom: 1px; }
.panel list row { min-height: 0; padding: 1px 4px; }
.panel list row togglebutton, .panel list row button { min-height: 20px; min-width: 20px; padding: 2px; }
label.mixed { font-style: italic; }
colorbutton.mixed, scale.mixed { opacity: 0.35; }
)";

// Asked of the toolkit itself: gtkmm 4.8 frees a time that is not its own.
gint64 TimeOfUse(Gtk::RecentInfo& item) { return g_date_time_to_unix(gtk_recent_info_get_modified(item.gobj())); }

void AddStyle() {
  auto provider = Gtk::CssProvider::create();
  provider->load_from_data(kStyle);
  Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider,
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
}

}  // namespace

// Without a message bus each program has its own windows, whatever it wants to share.
EditorApplication::EditorApplication(BundleSet* bundles, bool shares)
    : Gtk::Application(kIconName, shares ? Gio::Application::Flags::HANDLES_OPEN
                                         : Gio::Application::Flags::HANDLES_OPEN | Gio::Application::Flags::NON_UNIQUE),
      bundles_(bundles) {}

EditorApplication::~EditorApplication() { Host::Instance().userInterface = nullptr; }

Glib::RefPtr<EditorApplication> EditorApplication::Create(BundleSet* bundles, bool shares) {
  return Glib::make_refptr_for_instance(new EditorApplication(bundles, shares));
}

bool EditorApplication::IsRunningElsewhere() {
  try {
    return register_application() && is_remote();
  } catch (const Glib::Error&) {
    return false;  // without a bus that answers it runs on its own
  }
}

std::optional<SharedStyle>& EditorApplication::CopiedStyle() {
  static std::optional<SharedStyle> style;
  return style;
}

void EditorApplication::on_startup() {
  Gtk::Application::on_startup();
  AddStyle();
  Gtk::Window::set_default_icon_name(kIconName);
  AddActions();
  menus_ = MakeMenus();
  set_menubar(menus_.bar);
  SetKeys(*this);
  WatchSignals();
  Glib::add_exception_handler(sigc::mem_fun(*this, &EditorApplication::OnException));
  MemoryReserve::Keep([this] { ShowNoMemory(); });
  ShowRecent();
  Gtk::RecentManager::get_default()->signal_changed().connect([this] { ShowRecent(); });
}

void EditorApplication::AddActions() {
  add_action("new", [this] { NewWindow(); });
  add_action("quit", [this] { Quit(); });
  add_action("about", [this] { ShowAbout(); });
  add_action_with_parameter("open-recent", Glib::Variant<std::string>::variant_type(),
                            [this](const Glib::VariantBase& parameter) {
                              using Target = Glib::Variant<std::string>;
                              OpenDocument(Glib::VariantBase::cast_dynamic<Target>(parameter).get(), ActiveEditor());
                            });
  const auto applyDark = [](bool on) {
    Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme() = on;
  };
  add_action(NewToggle("dark", &WindowSettings::dark, applyDark));
  applyDark(WindowSettings::Instance().dark);
}

EditorWindow* EditorApplication::NewWindow(std::unique_ptr<DocumentSession> session) {
  auto* const window = new EditorWindow(std::move(session));
  add_window(*window);
  window->signal_hide().connect([this, window] {
    interface_.SetParent(nullptr);
    Glib::signal_idle().connect_once([window] { delete window; });
  });
  window->property_is_active().signal_changed().connect([this, window] {
    if (!window->is_active()) return;
    Host::Instance().Sessions().MakeCurrent(window->Session());
    interface_.SetParent(window);
    window->OnHistoryChanged();
  });
  window->present();
  return window;
}

EditorWindow* EditorApplication::NewWindow() {
  return NewWindow(std::make_unique<DocumentSession>(std::make_unique<Document>(kNewPage)));
}

void EditorApplication::BeginWork() {
  Host::Instance().userInterface = &interface_;
  atWork_ = std::make_unique<BundleAtWork>([this] {
    for (EditorWindow* editor : Editors()) editor->KeepChanges();
  });
}

// The first window tells how the program came up; one more is what whoever starts the program again wants.
void EditorApplication::on_activate() {
  const bool isFirst = Editors().empty();
  if (atWork_ == nullptr) BeginWork();
  EditorWindow* const window = NewWindow();
  if (!isFirst) return;
  window->ShowSkipped(bundles_->NotLoaded());
  OfferRecovery(window);
}

void EditorApplication::on_open(const type_vec_files& files, const Glib::ustring&) {
  if (Editors().empty()) on_activate();
  for (const auto& file : files) OpenDocument(file->get_path(), ActiveEditor());
}

// That which was used last.
EditorWindow* EditorApplication::ActiveEditor() {
  auto* const active = dynamic_cast<EditorWindow*>(get_active_window());
  return active != nullptr ? active : Editors().front();
}

std::vector<EditorWindow*> EditorApplication::Editors() {
  std::vector<EditorWindow*> editors;
  for (Gtk::Window* window : get_windows()) {
    if (auto* const editor = dynamic_cast<EditorWindow*>(window)) editors.push_back(editor);
  }
  return editors;
}

EditorWindow* EditorApplication::WindowOf(const std::string& path) {
  for (EditorWindow* editor : Editors()) {
    std::error_code none;
    if (editor->get_visible() && std::filesystem::equivalent(editor->Session().File().Path(), path, none)) {
      return editor;
    }
  }
  return nullptr;
}

void EditorApplication::OpenDocument(const std::string& path, EditorWindow* window) {
  if (EditorWindow* const shown = WindowOf(path)) return shown->present();
  auto session = DocumentSession::Open(path);
  if (!session) return window->ShowProblem(session.Why(), Gtk::MessageType::ERROR);
  NoteUse(path);
  if (window->IsUntouched()) {
    window->SetSession(std::move(*session));
  } else {
    NewWindow(std::move(*session));
  }
}

void EditorApplication::NoteUse(const std::string& path) {
  Gtk::RecentManager::get_default()->add_item(Gio::File::create_for_path(path)->get_uri());
}

// The documents that were used last, the last first.
void EditorApplication::ShowRecent() {
  std::vector<Glib::RefPtr<Gtk::RecentInfo>> items = Gtk::RecentManager::get_default()->get_items();
  std::sort(items.begin(), items.end(),
            [](const auto& a, const auto& b) { return TimeOfUse(*a.get()) > TimeOfUse(*b.get()); });
  menus_.recent->remove_all();
  for (const auto& item : items) {
    const std::string path = Gio::File::create_for_uri(item->get_uri())->get_path();
    if (!path.ends_with(kDocumentExtension) || !item->exists()) continue;
    auto entry = Gio::MenuItem::create(item->get_display_name(), "");
    entry->set_action_and_target("app.open-recent", Glib::Variant<std::string>::create(path));
    menus_.recent->append_item(entry);
    if (menus_.recent->get_n_items() == kMostRecent) break;
  }
}

void EditorApplication::LoadBundle(const std::string& path, EditorWindow* window) {
  if (const auto done = bundles_->Load(path); !done) return window->ShowProblem(done.Why(), Gtk::MessageType::ERROR);
  for (EditorWindow* editor : Editors()) editor->UpdateClasses();
  window->ShowNotice(N_("Loaded the bundle %s."), path);
}

void EditorApplication::ShowUndoTitles(const std::string& undo, const std::string& redo) {
  if (menus_.undo == nullptr) return;
  menus_.undo->remove_all();
  menus_.undo->append(undo, "win.undo");
  menus_.undo->append(redo, "win.redo");
}

// Windows ask one after the other; the first that stays keeps the program running.
void EditorApplication::Quit() {
  const std::vector<Gtk::Window*> windows = get_windows();
  for (Gtk::Window* window : windows) window->close();
}

// Nobody is there to answer a question: what is not saved is kept to be recovered. The signal then does what it does.
template <int kSignal>
gboolean EditorApplication::EndBySignal(void* self) {
  for (EditorWindow* editor : static_cast<EditorApplication*>(self)->Editors()) editor->KeepForRecovery();
  std::signal(kSignal, SIG_DFL);
  std::raise(kSignal);
  return G_SOURCE_CONTINUE;
}

// A hang-up that was to be ignored from the start, as for nohup, stays ignored.
void EditorApplication::WatchSignals() {
  g_unix_signal_add(SIGTERM, &EndBySignal<SIGTERM>, this);
  struct sigaction hangUp {};
  sigaction(SIGHUP, nullptr, &hangUp);
  if (hangUp.sa_handler != SIG_IGN) g_unix_signal_add(SIGHUP, &EndBySignal<SIGHUP>, this);
}

// The program goes on when memory was refused for something larger than the reserve: an edit was taken back on the way
// here. Whatever else was thrown ends it, as it would anywhere.
void EditorApplication::OnException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
  }
  ShowNoMemory();
}

void EditorApplication::ShowNoMemory() {
  std::fputs("objecthost: there is not enough memory\n", stderr);
  try {
    MemoryReserve::Fill();
    for (EditorWindow* editor : Editors()) {
      editor->KeepChanges();
      editor->ShowProblem(N_("there is not enough memory: look whether the last change was made"),
                          Gtk::MessageType::ERROR);
    }
  } catch (const std::bad_alloc&) {
    // It was said above.
  }
}

// What a crash left, one document after the other.
void EditorApplication::OfferRecovery(EditorWindow* window) {
  for (const RecoveryFile& found : FindRecoveries()) {
    const std::string name = found.original.empty() ? Tr("Untitled") : found.original;
    window->AskToRecover(name, [this, found, window](bool recover) {
      if (recover) {
        auto session = OpenRecovery(found);
        if (!session) return window->ShowProblem(session.Why(), Gtk::MessageType::ERROR);
        const bool shown = window->Session().File().Path() == (*session)->File().Path() &&
                           !window->Session().File().HasUnsavedChanges();
        if (window->IsUntouched() || shown) {
          window->SetSession(std::move(*session));
        } else {
          NewWindow(std::move(*session));
        }
      }
      if (const auto done = DiscardRecovery(found); !done) window->ShowProblem(done.Why(), Gtk::MessageType::ERROR);
    });
  }
}

void EditorApplication::ShowAbout() {
  auto* const dialog = new Gtk::AboutDialog;
  dialog->set_program_name("objecthost");
  dialog->set_version(kVersion);
  dialog->set_logo_icon_name(kIconName);
  dialog->set_comments(Tr("A host for plug-in bundles: draws, edits and keeps the objects that they bring."));
  if (Gtk::Window* const parent = get_active_window()) dialog->set_transient_for(*parent);
  dialog->signal_hide().connect([dialog] { delete dialog; });
  dialog->show();
}

}  // namespace host

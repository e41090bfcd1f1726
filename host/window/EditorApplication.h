// The program with its windows.
#pragma once

#include <gtkmm/application.h>

#include "host/bundles/BundleSet.h"
#include "host/session/StyleFields.h"
#include "host/storage/BundleAtWork.h"
#include "host/window/EditorWindow.h"
#include "host/window/Menus.h"
#include "host/window/WindowInterface.h"

namespace host {

class EditorApplication : public Gtk::Application {
 public:
  /// The bundles outlive the application.
  EditorApplication(const EditorApplication&) = delete;
  EditorApplication& operator=(const EditorApplication&) = delete;
  /// With `shares`, one program of the user's session has the windows of all, where there is a message bus: Register
  /// tells which.
  static Glib::RefPtr<EditorApplication> Create(BundleSet* bundles, bool shares);
  /// True when another program is there already that opens what this one is told to. To be asked before bundles are
  /// loaded, which only who has windows does.
  bool IsRunningElsewhere();

  /// Opens a document, in the window if that is untouched, else in a new one; one that is open already comes to the
  /// front. Says in `window` what went wrong.
  void OpenDocument(const std::string& path, EditorWindow* window);
  /// The window that shows the document of a file; null when there is none.
  EditorWindow* WindowOf(const std::string& path);
  /// Puts a document among those that were used last.
  static void NoteUse(const std::string& path);
  /// What the menus say of undoing: "Undo Move". The active window's.
  void ShowUndoTitles(const std::string& undo, const std::string& redo);
  /// The brush and the pen that were copied last, for all windows.
  static std::optional<SharedStyle>& CopiedStyle();
  /// Loads a bundle and tells `window` what became of it.
  void LoadBundle(const std::string& path, EditorWindow* window);

  ~EditorApplication() override;

 protected:
  EditorApplication(BundleSet* bundles, bool shares);

  void on_startup() override;
  void on_activate() override;
  void on_open(const type_vec_files& files, const Glib::ustring& hint) override;

 private:
  EditorWindow* NewWindow(std::unique_ptr<DocumentSession> session);
  EditorWindow* NewWindow();
  void BeginWork();
  EditorWindow* ActiveEditor();
  void AddActions();
  void Quit();
  void WatchSignals();
  void OnException();
  void ShowNoMemory();
  template <int kSignal>
  static gboolean EndBySignal(void* self);
  std::vector<EditorWindow*> Editors();
  void OfferRecovery(EditorWindow* window);
  void ShowAbout();
  void ShowRecent();

  BundleSet* bundles_;
  Menus menus_;
  WindowInterface interface_;
  std::unique_ptr<BundleAtWork> atWork_;  ///< from the first window on, when bundles are loaded
};

}  // namespace host

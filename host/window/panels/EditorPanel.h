// A panel beside the canvas: shows something of the session and changes it.
//
// Whatever happens to the session, a panel is told to show it once, when the program is idle next: a drag that sends a
// hundred events between two frames costs one refresh. Other objects are shown before the next event, which may be
// meant for them. What the user holds is left alone: while a slider of the panel is pressed, a pop-up is open or a name
// is edited the refresh waits; a field that is typed in keeps its text (TypedField).
#pragma once

#include <glibmm/main.h>
#include <gtkmm/box.h>

#include "host/session/DocumentSession.h"

namespace host {

class EditorPanel : public Gtk::Box, public SessionObserver {
 public:
  EditorPanel(const EditorPanel&) = delete;
  EditorPanel& operator=(const EditorPanel&) = delete;
  ~EditorPanel() override;

  /// Null shows nothing. The session outlives the panel or is replaced before.
  void SetSession(DocumentSession* session);
  /// What could not be done.
  sigc::signal<void(Problem)>& SignalProblem() { return problem_; }

  /// Other objects are selected, of which there is something to show, or not.
  sigc::signal<void(bool)>& SignalContent() { return content_; }

  // SessionObserver
  void OnObjectChanged(ObjectID) override { RefreshSoon(); }
  void OnLayersChanged() override { RefreshSoon(); }
  void OnPageChanged() override { RefreshSoon(); }
  void OnAidsChanged() override { RefreshSoon(); }
  void OnSelectionChanged() override;
  void OnHistoryChanged() override { RefreshSoon(); }
  void OnActiveLayerChanged() override { RefreshSoon(); }

 protected:
  EditorPanel();

  DocumentSession* Session() const { return session_; }
  /// Shows the session as it is now; it may be null. Widgets' signals that this raises are to be ignored: IsRefreshing
  /// is true meanwhile.
  virtual void Refresh() = 0;
  bool IsRefreshing() const { return refreshing_; }
  void RefreshSoon(int priority = Glib::PRIORITY_DEFAULT_IDLE);
  void RefreshNow();
  /// A panel that has nothing to show of what is selected is hidden, with its title.
  void ShowOrHide(bool shown);
  /// Reports a refused edit.
  void Report(const Result<>& done) {
    if (!done) problem_.emit(done.Why());
  }

 private:
  void RefreshWhenFree();

  DocumentSession* session_ = nullptr;
  bool refreshing_ = false;
  bool otherObjects_ = false;  ///< are selected than were at the last refresh
  sigc::connection idle_;
  sigc::signal<void(Problem)> problem_;
  sigc::signal<void(bool)> content_;
};

}  // namespace host

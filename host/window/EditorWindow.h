// A window with one document: canvas, rulers, panels, menus and messages.
#pragma once

#include <gtkmm/applicationwindow.h>
#include <gtkmm/infobar.h>
#include <gtkmm/label.h>
#include <gtkmm/paned.h>

#include <memory>
#include <vector>

#include "host/bundles/BundleSet.h"
#include "host/storage/OpenMark.h"
#include "host/storage/Recovery.h"
#include "host/window/ToolColumn.h"
#include "host/window/Toolbar.h"
#include "host/window/canvas/CanvasView.h"
#include "host/window/canvas/Ruler.h"
#include "host/window/dialogs/FileChooser.h"
#include "host/window/panels/EditorPanel.h"
#include "host/window/widgets/NumberField.h"

namespace host {

class EditorWindow : public Gtk::ApplicationWindow, public SessionObserver {
 public:
  explicit EditorWindow(std::unique_ptr<DocumentSession> session);
  EditorWindow(const EditorWindow&) = delete;
  EditorWindow& operator=(const EditorWindow&) = delete;
  ~EditorWindow() override;

  DocumentSession& Session() { return *session_; }
  /// Another document takes the place of this one's.
  void SetSession(std::unique_ptr<DocumentSession> session);
  /// True when the window shows a new document that was never changed.
  bool IsUntouched() const;
  /// Says something that needs no answer, above the canvas.
  void ShowProblem(const Problem& problem, Gtk::MessageType type);
  void ShowSkipped(const std::vector<BundleSet::Skipped>& bundles);
  /// That something is done, with the name in place of the text's "%s".
  void ShowNotice(Text text, const std::string& name);
  /// Calls `then` when the document may go: it has no unsaved changes, was saved, or the user gives them up.
  void AskToKeepChanges(const std::function<void()>& then);
  /// What is not saved is kept, for the case that the program ends now and knows nothing of it.
  void KeepChanges();
  /// The program is about to be ended: unsaved changes go into the recovery file, which stays.
  void KeepForRecovery();
  /// Asks whether a document that a crash left is to be recovered or discarded; without an answer `then` is not called.
  void AskToRecover(const std::string& name, const std::function<void(bool recover)>& then);
  /// The classes that can be made are others now.
  void UpdateClasses() { tools_.UpdateClasses(); }

  // SessionObserver
  void OnHistoryChanged() override { UpdateActions(); }
  void OnSelectionChanged() override { UpdateActions(); }
  void OnPathChanged() override;
  void OnLayersChanged() override { UpdateActions(); }
  void OnAidsChanged() override { ApplyAids(); }

 protected:
  bool on_close_request() override;

 private:
  using Edit = std::function<Result<>(const ObjectIDs&)>;

  void AddActions();
  /// An action that takes over what is being typed and ends the open step first: SlideStep has the rule.
  void AddCommand(const char* name, const std::function<void()>& command);
  /// One that a text takes that has the focus, as `textAction`; else it is the document's.
  void AddTextCommand(const char* name, const char* textAction, const std::function<void()>& command);
  void AddUndo(const char* name, const char* textAction, const std::function<void()>& command);
  void FinishTyping();
  /// For the next window.
  void RememberSize();
  void AddFileActions();
  void AddEditActions();
  void AddArrangeActions();
  void AddMarkActions();
  void AddViewActions();
  void AddAidActions();
  /// Grid, guides, snapping and unit are the document's or switched in this window.
  void ApplyAids();
  bool IsOn(const char* toggle);
  void AddRulers();
  void AddEdit(const char* name, Edit edit);
  Gtk::Widget* MakeSide();
  void AddPanels(Gtk::Box* scrolled, Gtk::Box* below);
  void RestorePanelWidth();
  Gtk::Widget* MakeCanvasArea();
  Gtk::Widget* MakeStatusLine();
  void AddDropTarget();
  void AddBracketKeys();
  void WatchMenus(Gtk::Widget* part);
  void LeaveMenus();
  void FocusCanvas();
  void UpdateActions();
  void UpdateTitle();
  void MarkOpen();
  void UpdateZoom();
  void SetEnabled(const char* action, bool enabled);
  void ShowMessage(const std::string& text, Gtk::MessageType type);
  void Do(const Result<>& done);

  /// `kinds` are names and patterns of files, several with semicolons between them.
  void ChooseFile(const std::string& title, const std::vector<std::pair<Glib::ustring, std::string>>& kinds,
                  const std::function<void(const std::string&)>& then);
  void Save(const std::function<void()>& then);
  void SaveAs(const std::function<void()>& then);
  void SaveTo(const std::string& path, const std::function<void()>& then);
  void AskToOverwrite(const std::function<void()>& then);
  void OfferAnotherPlace(const Problem& problem, const std::function<void()>& then);
  void Export();
  void ChooseDocument();
  void CopySelection(bool cut);
  enum class PastePlace { kAside, kInPlace, kAtPointer };
  void PasteClipboard(PastePlace place);
  void PasteObjects(const std::string& bytes, PastePlace place, const AGPoint& pointer);
  void PastePicture(const std::string& bytes, PastePlace place, const AGPoint& pointer);
  void ChooseImport();
  void ImportFile(const std::string& path, const AGPoint& middle);
  void ShowImported(const Result<Imported>& imported);
  void ShowFind();
  void Print();
  /// A document or a bundle is opened, a picture imported where it was dropped.
  void OpenDropped(const std::string& path, const AGPoint& place);
  AGPoint PlaceOnCanvas(double x, double y);

  std::unique_ptr<DocumentSession> session_;
  std::unique_ptr<Recovery> recovery_;  ///< of the session
  std::unique_ptr<OpenMark> mark_;      ///< of its file
  CanvasView canvas_;
  Ruler horizontalRuler_{Gtk::Orientation::HORIZONTAL};
  Ruler verticalRuler_{Gtk::Orientation::VERTICAL};
  Gtk::Paned paned_{Gtk::Orientation::HORIZONTAL};
  Gtk::Label unit_;  ///< where the rulers meet
  std::vector<std::unique_ptr<EditorPanel>> panels_;
  ToolColumn tools_{canvas_};
  Toolbar toolbar_;
  Gtk::InfoBar message_;
  Gtk::Label messageText_;
  Gtk::Label position_;
  NumberField zoom_;  ///< percent
  AlignTo alignTo_ = AlignTo::kObjects;
  int pasted_ = 0;  ///< how often since something was copied in this window: each paste steps aside of the one before
  FileChooser chooser_;
  sigc::connection autosave_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);  ///< for what comes later and can't be called off
};

}  // namespace host

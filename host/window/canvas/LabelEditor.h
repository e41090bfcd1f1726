// Edits the label of an object on the canvas, in a field over the object.
//
// The canvas is a child of this. What was typed is one undo step when it is taken over (TextArea); the field goes then,
// and stays while the document refuses the text.
#pragma once

#include <gtkmm/cssprovider.h>
#include <gtkmm/overlay.h>

#include "host/window/canvas/CanvasView.h"
#include "host/window/widgets/TextArea.h"

namespace host {

class LabelEditor : public Gtk::Overlay {
 public:
  explicit LabelEditor(CanvasView& canvas);

  /// Null shows nothing: what is typed is to be taken over before.
  void SetSession(DocumentSession* session);
  /// Edits the label of the object that was selected last. Nothing without one.
  void Begin();
  /// What could not be done.
  sigc::signal<void(Problem)>& SignalProblem() { return problem_; }

 private:
  bool Take(const std::string& text);
  void End();
  bool GetPlace(Gdk::Rectangle* place) const;
  void ShowStyle();

  CanvasView& canvas_;
  DocumentSession* session_ = nullptr;
  ObjectID object_ = kNoObjectID;  ///< whose label is edited
  TextArea area_;
  Glib::RefPtr<Gtk::CssProvider> style_;
  sigc::signal<void(Problem)> problem_;
};

}  // namespace host

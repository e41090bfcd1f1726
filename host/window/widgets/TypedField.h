// What is typed into a field counts when it is taken over: by Enter, by leaving the field, or by a command.
//
// Until then, or until Escape gives it up, it belongs to the user: whoever shows another value in the field does not
// touch the text. Lists and panels must not take the field away meanwhile either (IsHeld).
#pragma once

#include <gtkmm/window.h>

namespace host {

class TypedField {
 public:
  TypedField() = default;
  TypedField(const TypedField&) = delete;
  TypedField& operator=(const TypedField&) = delete;
  virtual ~TypedField() = default;

  /// From the first key until the text is taken over or given up.
  virtual bool IsBeingTyped() const = 0;
  virtual void TakeOver() = 0;
  virtual void GiveUp() = 0;

  /// The one that has the focus of the window; null when none has.
  static TypedField* Focused(Gtk::Window& window);
  /// Gives up what was left, refused, in fields within `root` that do not have the focus.
  static void GiveUpLeft(Gtk::Widget& root);
};

/// True when the user holds something within `root`: a slider that is pressed, a pop-up that is open, a name
/// that is edited.
bool IsHeld(Gtk::Widget& root);

}  // namespace host

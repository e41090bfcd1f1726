// A small window with a bar that shows how far some work is, and a button to stop it.
#pragma once

#include <gtkmm/button.h>
#include <gtkmm/label.h>
#include <gtkmm/progressbar.h>
#include <gtkmm/window.h>

namespace host {

class ProgressWindow : public Gtk::Window {
 public:
  /// `parent` may be null.
  ProgressWindow(Gtk::Window* parent, const std::string& title);
  ProgressWindow(const ProgressWindow&) = delete;
  ProgressWindow& operator=(const ProgressWindow&) = delete;
  ~ProgressWindow() override;

  /// True while work goes on that must not lose what it works on.
  static bool IsAnyOpen();
  /// All work is to stop as soon as it can.
  static void StopAll();

  /// Shows the fraction, 0 to 1, and lets the program see to its events. False when the user wants to stop.
  bool Update(double fraction, const std::string& text);

 protected:
  bool on_close_request() override;

 private:
  Gtk::Label text_;
  Gtk::ProgressBar bar_;
  Gtk::Button stop_;
  bool stopped_ = false;
};

}  // namespace host

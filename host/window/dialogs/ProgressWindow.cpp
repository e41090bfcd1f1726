#include "host/window/dialogs/ProgressWindow.h"

#include <glibmm/main.h>
#include <gtkmm/box.h>

#include <vector>

#include "host/text/Localisation.h"

namespace host {
namespace {

std::vector<ProgressWindow*>& OpenWindows() {
  static std::vector<ProgressWindow*> windows;
  return windows;
}

}  // namespace

bool ProgressWindow::IsAnyOpen() { return !OpenWindows().empty(); }

void ProgressWindow::StopAll() {
  for (ProgressWindow* window : OpenWindows()) window->stopped_ = true;
}

ProgressWindow::~ProgressWindow() { std::erase(OpenWindows(), this); }

ProgressWindow::ProgressWindow(Gtk::Window* parent, const std::string& title) : stop_(Tr("_Cancel"), true) {
  set_title(title);
  set_modal(true);
  set_resizable(false);
  set_default_size(360, -1);
  if (parent != nullptr) set_transient_for(*parent);
  auto* const box = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 10);
  box->set_margin(16);
  text_.set_xalign(0);
  stop_.set_halign(Gtk::Align::END);
  stop_.signal_clicked().connect([this] { stopped_ = true; });
  box->append(text_);
  box->append(bar_);
  box->append(stop_);
  set_child(*box);
  OpenWindows().push_back(this);
}

bool ProgressWindow::Update(double fraction, const std::string& text) {
  text_.set_text(text);
  bar_.set_fraction(fraction);
  if (!get_visible()) present();
  const auto context = Glib::MainContext::get_default();
  while (!stopped_ && context->pending()) context->iteration(false);
  return !stopped_;
}

// The work ends before its window does.
bool ProgressWindow::on_close_request() {
  stopped_ = true;
  return true;
}

}  // namespace host

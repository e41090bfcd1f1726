// The widget of one control of a bundle's panel.
#pragma once

#include <gtkmm/widget.h>

#include <functional>
#include <memory>

#include "host/panels/HostControl.h"
#include "kit/panels/AKGUIDesc.h"

namespace host {

class ControlWidget {
 public:
  /// Gives the value to a control of the panel.
  using SetValue = std::function<void(AKGUIDesc& panel, unsigned int controlID)>;
  /// The user changed the control; `more` tells that it is one of a burst of changes, as of a slider.
  using Changed = std::function<void(unsigned int controlID, const SetValue& set, bool more)>;

  static std::unique_ptr<ControlWidget> Make(const HostControl& control, Changed changed);
  ControlWidget(const ControlWidget&) = delete;
  ControlWidget& operator=(const ControlWidget&) = delete;
  virtual ~ControlWidget() = default;

  virtual Gtk::Widget& Widget() = 0;
  /// Shows the control as it is now; `mixed` when several objects differ. The value waits while the user holds the
  /// widget (IsHeld) or types in it.
  void Show(const HostControl& control, bool mixed);

 protected:
  ControlWidget(const HostControl& control, Changed changed) : id_(control.ID()), changed_(std::move(changed)) {}

  virtual void ShowValue(const HostControl& control, bool mixed) = 0;
  void Tell(const SetValue& set, bool more) const {
    if (!showing_) changed_(id_, set, more);
  }
  unsigned int ID() const { return id_; }

 private:
  unsigned int id_;
  Changed changed_;
  bool showing_ = false;
};

}  // namespace host

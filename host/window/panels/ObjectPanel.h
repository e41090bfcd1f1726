// Position, size and angle of the selected objects.
#pragma once

#include "host/window/panels/EditorPanel.h"
#include "host/window/widgets/FormGrid.h"
#include "host/window/widgets/NumberField.h"

namespace host {

class ObjectPanel : public EditorPanel {
 public:
  ObjectPanel();

  // SessionObserver
  void OnSelectionShifted() override;

 protected:
  void Refresh() override;

 private:
  /// The box of one object is its unturned bounds; of several, the box around them.
  bool GetFrame(AGRect* box) const;
  void PlaceFrame(const AGRect& box);
  void SetAngle(double degrees);
  void SetRadius(double radius);
  void ShowRadius();
  template <typename Get>
  std::optional<double> Shared(Get get) const;

  FormGrid grid_;
  NumberField x_;
  NumberField y_;
  NumberField width_;
  NumberField height_;
  NumberField angle_;
  NumberField opacity_;  ///< percent
  NumberField radius_;
};

}  // namespace host

// The control service table.
#include <cstdarg>

#include "host/panels/HostControl.h"

namespace host {
namespace {

void Construct(AKGUICtrl* wrapper, AKGUIDesc*, const char* format, va_list list) {
  AKString description;
  description.Assignv(format, list);
  wrapper->SetHostObject(new HostControl(description));
}

void Destruct(AKGUICtrl* wrapper) {
  delete HostControl::Of(wrapper);
  wrapper->SetHostObject(nullptr);
}

// A function of ControlOperations as a member of HostControl: a virtual one, behind an adjustment.
template <typename Function>
constexpr auto OfControl(Function ControlOperations::*function) {
  return static_cast<Function HostControl::*>(function);
}

TableBuilder MakeTable() {
  using Ops = ControlOperations;
  TableBuilder table;
  table.Plain(32, &Construct);
  table.Plain(40, &Destruct);
  table.Member(96, OfControl(&Ops::SetProperty));
  table.Member(112, OfControl(&Ops::GetProperty));
  table.Member(128, OfControl(&Ops::SetBounds));
  table.Member(144, OfControl(&Ops::GetBounds));
  table.Member(160, OfControl(&Ops::SetTitle));
  table.Member(176, OfControl(&Ops::GetTitle));
  table.Member(192, OfControl(&Ops::SetRange));
  table.Member(208, OfControl(&Ops::GetRange));
  table.Member(224, OfControl(&Ops::SetXPMIcon));
  table.Member(240, OfControl(&Ops::GetXPMIcon));
  table.Member(352, OfControl(&Ops::SetMenuItemList));
  table.Member(368, OfControl(&Ops::GetMenuItemAtIndex));
  table.Member(384, OfControl(&Ops::GetMenuItemCount));
  table.Member(400, OfControl(&Ops::SetMenuIndex));
  table.Member(416, OfControl(&Ops::GetMenuIndex));
  table.Member(432, OfControl(&Ops::SetMenuItem));
  table.Member(448, OfControl(&Ops::GetMenuItem));
  table.Member(480, OfControl(&Ops::GetValuePrecision));
  table.Member(496, OfControl(&Ops::GetValueAsString));
  table.Member(512, OfControl(&Ops::GetValueAsBool));
  table.Member(528, OfControl(&Ops::GetValueAsSInt));
  table.Member(544, OfControl(&Ops::GetValueAsUInt));
  table.Member(560, OfControl(&Ops::GetValueAsFloat32));
  table.Member(576, OfControl(&Ops::GetValueAsFloat64));
  table.Member(592, OfControl(&Ops::GetValueAsTimeHMS));
  table.Member(608, OfControl(&Ops::GetValueAsAGColor));
  table.Member(736, OfControl(&Ops::SetValuePrecision));
  table.Member(752, OfControl(&Ops::SetValueAsString));
  table.Member(768, OfControl(&Ops::SetValueAsBool));
  table.Member(784, OfControl(&Ops::SetValueAsSInt));
  table.Member(800, OfControl(&Ops::SetValueAsUInt));
  table.Member(816, OfControl(&Ops::SetValueAsFloat32));
  table.Member(832, OfControl(&Ops::SetValueAsFloat64));
  table.Member(848, OfControl(&Ops::SetValueAsTimeHMS));
  table.Member(864, OfControl(&Ops::SetValueAsAGColor));
  table.Member(992, OfControl(&Ops::Refresh));
  return table;
}

}  // namespace

void* HostControl::Table() {
  static TableBuilder table = MakeTable();
  return table.Table();
}

}  // namespace host

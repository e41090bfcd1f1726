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

AKControlTable MakeTable() {
  AKControlTable table;
  table.construct = &Construct;
  table.destruct = &Destruct;
  table.setProperty.Set<HostControl>(&HostControl::SetProperty);
  table.getProperty.Set<HostControl>(&HostControl::GetProperty);
  table.setBounds.Set<HostControl>(&HostControl::SetBounds);
  table.getBounds.Set<HostControl>(&HostControl::GetBounds);
  table.setTitle.Set<HostControl>(&HostControl::SetTitle);
  table.getTitle.Set<HostControl>(&HostControl::GetTitle);
  table.setRange.Set<HostControl>(&HostControl::SetRange);
  table.getRange.Set<HostControl>(&HostControl::GetRange);
  table.setXPMIcon.Set<HostControl>(&HostControl::SetXPMIcon);
  table.getXPMIcon.Set<HostControl>(&HostControl::GetXPMIcon);
  table.setMenuItemList.Set<HostControl>(&HostControl::SetMenuItemList);
  table.getMenuItemAtIndex.Set<HostControl>(&HostControl::GetMenuItemAtIndex);
  table.getMenuItemCount.Set<HostControl>(&HostControl::GetMenuItemCount);
  table.setMenuIndex.Set<HostControl>(&HostControl::SetMenuIndex);
  table.getMenuIndex.Set<HostControl>(&HostControl::GetMenuIndex);
  table.setMenuItem.Set<HostControl>(&HostControl::SetMenuItem);
  table.getMenuItem.Set<HostControl>(&HostControl::GetMenuItem);
  table.getValuePrecision.Set<HostControl>(&HostControl::GetValuePrecision);
  table.getValueAsString.Set<HostControl>(&HostControl::GetValueAsString);
  table.getValueAsBool.Set<HostControl>(&HostControl::GetValueAsBool);
  table.getValueAsSInt.Set<HostControl>(&HostControl::GetValueAsSInt);
  table.getValueAsUInt.Set<HostControl>(&HostControl::GetValueAsUInt);
  table.getValueAsFloat32.Set<HostControl>(&HostControl::GetValueAsFloat32);
  table.getValueAsFloat64.Set<HostControl>(&HostControl::GetValueAsFloat64);
  table.getValueAsTimeHMS.Set<HostControl>(&HostControl::GetValueAsTimeHMS);
  table.getValueAsAGColor.Set<HostControl>(&HostControl::GetValueAsAGColor);
  table.setValuePrecision.Set<HostControl>(&HostControl::SetValuePrecision);
  table.setValueAsString.Set<HostControl>(&HostControl::SetValueAsString);
  table.setValueAsBool.Set<HostControl>(&HostControl::SetValueAsBool);
  table.setValueAsSInt.Set<HostControl>(&HostControl::SetValueAsSInt);
  table.setValueAsUInt.Set<HostControl>(&HostControl::SetValueAsUInt);
  table.setValueAsFloat32.Set<HostControl>(&HostControl::SetValueAsFloat32);
  table.setValueAsFloat64.Set<HostControl>(&HostControl::SetValueAsFloat64);
  table.setValueAsTimeHMS.Set<HostControl>(&HostControl::SetValueAsTimeHMS);
  table.setValueAsAGColor.Set<HostControl>(&HostControl::SetValueAsAGColor);
  table.refresh.Set<HostControl>(&HostControl::Refresh);
  return table;
}

}  // namespace

const AKControlTable* HostControl::Table() {
  static const AKControlTable table = MakeTable();
  return &table;
}

}  // namespace host

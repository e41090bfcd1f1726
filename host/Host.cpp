#include "host/Host.h"

#include "CoreGraphics/CGContext.h"
#include "host/panels/HostControl.h"
#include "host/panels/HostPanel.h"

namespace host {

Host& Host::Instance() {
  static Host host;
  return host;
}

// The host's own copy of the kit goes through the same tables as the bundles'. The registry is made first, and the
// panels in it are destroyed through the tables, which are static and outlive it.
Host::Host() {
  GeneralTable();
  ClassTable();
  HandlerTable();
  HostControl::Table();
  HostPanel::Table();
  AKStoreHostServices(ServiceRecord());
  // This call does nothing but tie the native layer to the program: it has to be there before the first bundle and stay
  // after the last one, since libraries that it stands on do not clean up after themselves.
  CGContextRelease(nullptr);
}

AKHostServiceRecord Host::ServiceRecord() const {
  AKHostServiceRecord record{};
  record.magic = AKHostServiceRecord::kMagic;
  record.apiVersion = kAPIVersion;
  record.displayScale = 1.0;
  record.generalTable = GeneralTable();
  record.classTable = ClassTable();
  record.handlerTable = HandlerTable();
  record.controlTable = HostControl::Table();
  record.panelTable = HostPanel::Table();
  return record;
}

}  // namespace host

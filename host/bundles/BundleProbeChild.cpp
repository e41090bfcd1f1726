// The process that tries a bundle.
#include "graphics/bitmaps/AGBitmap.h"
#include "host/HostLog.h"
#include "host/bundles/Bundle.h"
#include "host/bundles/BundleProbe.h"
#include "host/bundles/ProbeProcess.h"
#include "host/model/Document.h"
#include "host/model/ObjectRecord.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/tables/SlotCall.h"
#include "kit/streams/AKFile.h"

namespace host {
namespace {

void Draw(const DocumentObject& object) {
  const AGBitmap bitmap(128, 128, AGBitmap::kFlagZeroFill);
  DrawObject(object, bitmap.GetContextOfBitmap(), object.brush, object.pen);
}

void WriteAndRead(const AKObject* object) {
  AKFile file(AKFile::kModeMemory);
  if (file.CreateForReadWrite() != 0 || AKClass::WriteObjectToFile(object, file) != 0 || file.SetPos(0) != 0) return;
  const Instance copy(AKClass::NewObjectFromFile(nullptr, file, kRecordVersion));
}

void FillPanel(const RegisteredClass& entry, const AKObject* object) {
  if (entry.panel == nullptr || !HasSlot(*entry.record, kAKMethodInspector)) return;
  AKGUIEvent event;
  event.kind = AKGUIEvent::kFillControls;
  CallSlot<int, AKGUIDesc&, AKGUIEvent&>(*entry.record, kAKMethodInspector, object, *entry.panel, event);
}

// What the calls return is the class's business; they have to come back.
void Try(const RegisteredClass& entry) {
  const auto made = Document::NewObject(entry.record->classID, "-default");
  if (!made) return;
  DocumentObject* const object = made->get();
  object->angle = 0.5;
  Draw(*object);
  WriteAndRead(object->instance.get());
  FillPanel(entry, object->instance.get());
}

}  // namespace

int RunProbe(const std::string& bundlePath) {
  const ProbeReport report;
  HostLog::Instance().sink = [&report](const std::string& line) { report.Log(line); };
  const auto bundle = Bundle::Load(bundlePath);
  if (!bundle) {
    report.Refuse(bundle.Why());
    return 1;
  }
  for (const RegisteredClass* entry : (*bundle)->Classes()) Try(*entry);
  report.Pass();
  return 0;
}

}  // namespace host

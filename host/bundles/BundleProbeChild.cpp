// The process that tries a bundle.
#include <sys/resource.h>

#include <cstdarg>
#include <cstdio>

#include "graphics/AGBitmap.h"
#include "graphics/AKDrawEvent.h"
#include "host/QuietLog.h"
#include "host/bundles/Bundle.h"
#include "host/bundles/BundleProbe.h"
#include "host/bundles/Instance.h"
#include "host/tables/SlotCall.h"
#include "kit/AKFile.h"

namespace host {
namespace {

AKObject* NewDefault(AKClassID id, char const* format, ...) {
  va_list list;
  va_start(list, format);
  AKObject* object = AKClass::NewObjectWithArgs(nullptr, id, format, list);
  va_end(list);
  return object;
}

void Draw(AKClass const& cls, AKObject const* object) {
  if (!HasSlot(cls, kAKMethodDraw)) return;
  AGBrush brush;
  brush.SetStyleSolid(kAGColorWhite);
  AGPen pen;
  pen.SetStyleSolid(kAGColorBlack, 1.0, kAGPenSizeModeAbsolute);
  AKDrawEvent event;
  event.bounds = {4, 4, 28, 28};
  event.angle = 0.5;
  event.recommendedBrush = &brush;
  event.recommendedPen = &pen;
  const AGBitmap bitmap(32, 32, 0x2);
  const AGContext context = bitmap.GetContextOfBitmap();
  CallSlot<int, AGContext const&, AKDrawEvent const&>(cls, kAKMethodDraw, object, context, event);
}

void WriteAndRead(AKObject const* object) {
  AKFile file(AKFile::kModeMemory);
  if (file.CreateForReadWrite() != 0 || AKClass::WriteObjectToFile(object, file) != 0 || file.SetPos(0) != 0) return;
  const Instance copy(AKClass::NewObjectFromFile(nullptr, file, 0));
}

void FillPanel(RegisteredClass const& entry, AKObject const* object) {
  if (entry.panel == nullptr || !HasSlot(*entry.record, kAKMethodInspector)) return;
  AKGUIEvent event;
  event.kind = AKGUIEvent::kFillControls;
  CallSlot<int, AKGUIDesc&, AKGUIEvent&>(*entry.record, kAKMethodInspector, object, *entry.panel, event);
}

// What the calls return is the class's business; they have to come back.
void Try(RegisteredClass const& entry) {
  const Instance object(NewDefault(entry.record->classID, "-default"));
  if (!object) return;
  Draw(*entry.record, object.get());
  WriteAndRead(object.get());
  FillPanel(entry, object.get());
}

}  // namespace

int RunProbe(std::string const& bundlePath) {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  const QuietLog quiet;
  std::string error;
  const auto bundle = Bundle::Load(bundlePath, &error);
  if (!bundle) {
    std::printf("%s\n", error.c_str());
    return 1;
  }
  for (RegisteredClass const* entry : bundle->Classes()) Try(*entry);
  return 0;
}

}  // namespace host

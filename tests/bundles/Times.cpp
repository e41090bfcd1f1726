// A bundle of one class with a length of time, which its panel shows in a field of hours, minutes and seconds, and a
// note, which it keeps with a full stop behind it.
#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

namespace {

class Timed final : public AKObjectClass<Timed, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "tTimed";
  static constexpr char kClassName[] = "Timed";
  static constexpr char kLocaleDomain[] = "Times";
  static const char* DisplayName() { return "Timed"; }

  static AKGUIDesc* BuildInspectorGUIDesc() {
    auto* panel = new AKGUIDesc("-multisel:1");
    panel->NewController("-type:StaticText -pos:(10;7) -dim:(68;16) -title:Duration");
    panel->NewController("-id:1 -type:EditNum -prec:0 -pos:(82;2) -dim:(98;22)");
    panel->NewController("-type:StaticText -pos:(10;37) -dim:(68;16) -title:Note");
    panel->NewController("-id:2 -type:EditText -pos:(82;32) -dim:(98;22)");
    panel->SetPanelSize(0, 58);
    return panel;
  }

  int akmInitFromFile(const AKFile& file, unsigned int) {
    const int status = AKFileReadFloat64(file, &seconds_, 0);
    return status == 0 ? AKFileReadAKString(file, &note_) : status;
  }
  int akmWriteToFile(AKFile& file) const {
    const int status = AKFileWriteFloat64(file, seconds_, 0);
    return status == 0 ? AKFileWriteAKString(file, note_) : status;
  }
  int akmGetObjectProperties(AKDictionary* properties) const {
    properties->SetValue("Seconds", AKValueSetasFloat64(seconds_));
    properties->SetValue("Note", AKValueSetasAKString(note_));
    return 0;
  }
  int akmDraw(const AGContext& context, const AKDrawEvent& event) const {
    AGContext copy(context);
    event.SetupContextWithRecommendedBrushAndPen(&copy);
    copy.DrawRect(event.bounds);
    return 0;
  }
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
    if (event.kind == AKGUIEvent::kControlChanged) {
      seconds_ = panel.GetValueAsTimeHMS(1);
      if (event.ctrlID == 2) note_ = panel.GetValueAsString(2) + ".";
    }
    panel.SetValueAsTimeHMS(1, seconds_);
    panel.SetValueAsString(2, note_);
    return 0;
  }

 private:
  double seconds_ = 3725;
  AKString note_;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  AKClass* record = nullptr;
  return Timed::Register(hostServiceRecord, &record);
}

// A bundle of one class with a length of time, which its panel shows in a field of hours, minutes and seconds.
#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"
#include "kit/streams/AKFileNumbers.h"
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
    panel->SetPanelSize(0, 28);
    return panel;
  }

  int akmInitFromFile(const AKFile& file, unsigned int) { return AKFileReadFloat64(file, &seconds_, 0); }
  int akmWriteToFile(AKFile& file) const { return AKFileWriteFloat64(file, seconds_, 0); }
  int akmGetObjectProperties(AKDictionary* properties) const {
    properties->SetValue("Seconds", AKValueSetasFloat64(seconds_));
    return 0;
  }
  int akmDraw(const AGContext& context, const AKDrawEvent& event) const {
    AGContext copy(context);
    event.SetupContextWithRecommendedBrushAndPen(&copy);
    copy.DrawRect(event.bounds);
    return 0;
  }
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
    if (event.kind == AKGUIEvent::kControlChanged) seconds_ = panel.GetValueAsTimeHMS(1);
    panel.SetValueAsTimeHMS(1, seconds_);
    return 0;
  }

 private:
  double seconds_ = 3725;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  AKClass* record = nullptr;
  return Timed::Register(hostServiceRecord, &record);
}

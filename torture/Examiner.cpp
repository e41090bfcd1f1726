#include "torture/Examiner.h"

#include <algorithm>
#include <memory>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"
#include "torture/Ask.h"
#include "torture/Call.h"
#include "torture/Lives.h"
#include "torture/Report.h"

namespace torture {
namespace {

constexpr unsigned int kMark = 0x4D415845;
constexpr unsigned int kControls = 5;

void AskAt(const Moment& moment) {
  if (moment.TakesRound()) AskEverything(moment);
}

// What follows the value in the record, so that one that was changed is known.
unsigned int SumOf(double value) { return static_cast<unsigned int>(value * 4294967295.0) ^ kMark; }

MomentID MomentOf(const AKGUIEvent& event) {
  if (event.kind == AKGUIEvent::kFillControls) return MomentID::kFill;
  return event.kind == AKGUIEvent::kControlChanged ? MomentID::kChange : MomentID::kIdle;
}

}  // namespace

const char* Examiner::DisplayName() { return NKLocaleGetString("Host Examiner"); }

AKGUIDesc* Examiner::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-flags:256");
  panel->NewController("-id:%u -type:Slider -pos:(10;4) -dim:(210;20) -range:(0;1)", kValue);
  const auto button = [&panel](Control id, int y, const char* title) {
    panel->NewController("-id:%u -type:Button -pos:(10;%d) -dim:(210;22) -title:\"%s\"", id, y, title);
  };
  button(kEdit, 32, NKLocaleGetString("Edit the Document"));
  button(kDialogs, 60, NKLocaleGetString("Open Dialogs"));
  button(kMemory, 88, NKLocaleGetString("Measure Memory"));
  button(kDeleteMe, 116, NKLocaleGetString("Delete This Object"));
  panel->SetPanelSize(0, 144);
  return panel.release();
}

Examiner::Examiner() {
  Lives::Made(this);
  AskAt(Moment(MomentID::kConstructor, this));
}

Examiner::~Examiner() {
  AskAt(Moment(MomentID::kDestructor, this));
  Lives::Destroyed(this);
}

int Examiner::akmInitWithArgs(const AKArgs&) {
  Lives::Initialises(this, "slot.akmInitWithArgs");
  AskAt(Moment(MomentID::kInitWithArgs, this));
  return 0;
}

int Examiner::akmInitFromFile(const AKFile& file, unsigned int version) {
  Lives::Initialises(this, "slot.akmInitFromFile");
  AskAt(Moment(MomentID::kInitFromFile, this));
  const Call call("slot.akmInitFromFile", "the host has an object read its record", kClassRecordSection);
  call.ExpectIs(1U, version);
  unsigned int mark = 0;
  unsigned int sum = 0;
  double value = 0;
  int status = AKFileReadUInt32(file, &mark, 0);
  if (status == 0) status = AKFileReadFloat64(file, &value, 0);
  if (status == 0) status = AKFileReadUInt32(file, &sum, 0);
  const bool isWhole = status == 0 && mark == kMark && sum == SumOf(value);
  call.Expect(isWhole, "the bytes that akmWriteToFile wrote", "others, or fewer");
  if (isWhole) value_ = value;
  return isWhole || status != 0 ? status : -4712;
}

int Examiner::akmWriteToFile(AKFile& file) const {
  Lives::Uses(this, "slot.akmWriteToFile");
  AskAt(Moment(MomentID::kWriteToFile, this));
  int status = AKFileWriteUInt32(file, kMark, 0);
  if (status == 0) status = AKFileWriteFloat64(file, value_, 0);
  return status == 0 ? AKFileWriteUInt32(file, SumOf(value_), 0) : status;
}

int Examiner::akmDelete() {
  Lives::Ends(this);
  AskAt(Moment(MomentID::kDelete, this));
  return 0;
}

int Examiner::akmSetObjectProperties(const AKDictionary& properties) {
  const bool isNew = !Lives::IsInitialised(this);
  Lives::Initialises(this, "slot.akmSetObjectProperties");
  AskAt(Moment(isNew ? MomentID::kSetPropertiesMaking : MomentID::kSetProperties, this));
  AKValueGetasFloat64(properties.GetValue("Value"), &value_, false);
  value_ = value_ >= 0 ? std::min(value_, 1.0) : 0;
  return 0;
}

int Examiner::akmGetObjectProperties(AKDictionary* properties) const {
  Lives::Uses(this, "slot.akmGetObjectProperties");
  AskAt(Moment(MomentID::kGetProperties, this));
  const Report& report = Report::The();
  const std::size_t left = report.EntriesNotReached().size() + report.MomentsNotReached().size();
  properties->SetValue("Value", AKValueSetasFloat64(value_));
  properties->SetValue("Calls", AKValueSetasUInt(report.Calls()));
  properties->SetValue("Findings", AKValueSetasUInt(report.FindingCount()));
  return properties->SetValue("NotReached", AKValueSetasUInt(left));
}

int Examiner::akmDraw(const AGContext& context, const AKDrawEvent& event) const {
  Lives::Uses(this, "slot.akmDraw");
  AskAt(Moment(MomentID::kDraw, this));
  AGContext copy(context);
  event.SetupContextWithRecommendedBrushAndPen(&copy);
  if (Report::The().FindingCount() != 0) copy.brush.SetColor(kAGColorRed);
  copy.DrawRect(event.bounds);
  AGRect bar = event.bounds;
  bar.x1 = bar.x0 + bar.Width() * value_;
  copy.DrawRect(bar);
  return 0;
}

AGRect Examiner::akmGetNaturalBounds() const {
  Lives::Uses(this, "slot.akmGetNaturalBounds");
  AskAt(Moment(MomentID::kNaturalBounds, this));
  return {0, 0, 1, 1};
}

int Examiner::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  Lives::Uses(this, "slot.akmInspector");
  const Moment moment(MomentOf(event), this);
  AskAt(moment);
  const Call call("slot.akmInspector", "the host sends an event", kPanelSection);
  call.ExpectIs(kControls, panel.GetControllerCount());
  if (moment.ID() == MomentID::kFill) panel.SetValueAsFloat64(kValue, value_);
  if (moment.ID() == MomentID::kChange) Change(panel, event);
  return 0;
}

void Examiner::Change(AKGUIDesc& panel, AKGUIEvent& event) {
  const Moment& moment = *Moment::Current();
  NKLocaleSetDomain(kLocaleDomain);
  event.actionName = AKString(NKLocaleGetString("Examine the Host"));
  switch (event.ctrlID) {
    case kValue:
      value_ = std::clamp(panel.GetValueAsFloat64(kValue), 0.0, 1.0);
      break;
    case kEdit:
      return AskManyEdits(moment);
    case kDialogs:
      return AskDialogsOpen(this, &panel);
    case kMemory:
      AskHuge();
      return AskMemory(moment);
    case kDeleteMe:
      return AskOwnDeletion(this);
    default:
      Call("slot.akmInspector", "the host tells of a change", kPanelSection)
          .Expect(false, "a control of the panel", "control " + std::to_string(event.ctrlID));
  }
}

void Examiner::Close(AKGUIDesc& panel) {
  Call close("panel.closeDialog", "close the dialog from within its procedure, with 17", kPanelSection);
  close([&] { panel.CloseDialog(17); });
}

int Examiner::CloseAtOnce(AKGUIDesc& panel, AKGUIEvent& event) {
  Lives::Uses(this, "slot.akmInspector");
  AskAt(Moment(MomentID::kDialog, this));
  if (event.kind == AKGUIEvent::kFillControls) Close(panel);
  return 0;
}

int Examiner::CloseByButton(AKGUIDesc& panel, AKGUIEvent& event) {
  Lives::Uses(this, "slot.akmInspector");
  AskAt(Moment(MomentID::kDialog, this));
  if (event.kind == AKGUIEvent::kControlChanged) Close(panel);
  return 0;
}

}  // namespace torture

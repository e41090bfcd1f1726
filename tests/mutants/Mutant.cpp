#include "Mutant.h"

#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKTextConversions.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

const AKHostServiceRecord* gKeptRecord = nullptr;
double gShared = 0.5;
static bool sIsResourceThere = false;

bool IsResourceThere() { return sIsResourceThere; }

namespace {

constexpr int kRefused = -4712;
constexpr unsigned int kReserved = 8;
constexpr std::size_t kPool = 500;

const AKString kKey_Alpha("Alpha");
const AKString kKey_Count("Count");
const AKString kKey_On("On");
const AKString kKey_Label("Label");

std::vector<const Mutant*> sAll;

// The word of "/folder/Mutant-word.so".
std::string FaultOf(const void* address) {
  Dl_info info{};
  if (dladdr(address, &info) == 0 || info.dli_fname == nullptr) return "";
  const std::string name = info.dli_fname;
  const std::size_t begin = name.rfind("Mutant-");
  return begin == std::string::npos ? "" : name.substr(begin + 7, name.size() - begin - 10);
}

}  // namespace

void CrashIf(bool crashes) {
  if (crashes) std::abort();
}

void Leak(std::size_t size) {
  void* volatile block = std::malloc(size);
  static_cast<void>(block);
}

bool Has(const char* fault) {
  static const std::string own = FaultOf(reinterpret_cast<const void*>(&kRefused));
  return own == fault;
}

Mutant::Mutant() {
  sIsResourceThere = true;
  if (Has("scans-all")) {
    sAll.push_back(this);
    volatile int sum = 0;
    for (int i = 0; i < 20; ++i) {
      for (const Mutant* other : sAll) sum = sum + other->count_;
    }
  }
  if (Has("writes-behind")) std::memset(&room_ + 1, 0x11, sizeof(double));
}

Mutant::~Mutant() {
  std::erase(sAll, this);
  std::free(kept_);
}

AKObject* Mutant::Construct() {
  static std::size_t made = 0;
  if (Has("pool-of-500") && ++made > kPool) return nullptr;
  AKObject* object = _ClassCtor();
  if (Has("wrong-header")) std::memset(reinterpret_cast<char*>(object) + 16, 'x', 3);
  return object;
}

void Mutant::Destroy(AKObject* object) {
  if (Has("destroys-null")) CrashIf(object == nullptr);
  _ClassDtor(object);
}

void Mutant::SetAlpha(double alpha) {
  alpha_ = alpha >= 0 ? std::fmin(alpha, 1) : 0;  // a NaN is 0
  if (Has("shared-state")) gShared = alpha_;
}

void Mutant::SetCount(double count) {
  if (!std::isnan(count)) count_ = static_cast<int>(std::clamp(std::floor(count + 0.5), 1.0, 20.0));
}

int Mutant::akmInitWithArgs(const AKArgs& args) {
  isInitialised_ = true;
  if (Has("leaks-object")) Leak(48);
  if (Has("needs-arguments") && args.Count() == 0) return kRefused;
  if (Has("twelve-arguments")) CrashIf(args.Count() > 12);
  if (Has("noise")) kept_ = std::malloc(64);
  if (Has("behind-a-buffer")) {
    const volatile std::size_t size = 10;
    static_cast<volatile char*>(kept_ = std::malloc(size))[size] = 1;
  }
  double number = 0;
  const AKString count = args.GetParam("-count:");
  if (Has("argument-without-digits")) {
    CrashIf(args.IsParam("-count:") && !strGetasFloat64(count.CStr(), &number, 0));
  }
  if (strGetasFloat64(count.CStr(), &number, 0)) SetCount(number);
  return 0;
}

int Mutant::akmDelete() {
  if (Has("ends-initialised")) CrashIf(!isInitialised_);
  if (Has("ends-shared")) sIsResourceThere = false;
  return 0;
}

// u32 count, f32 alpha, u8 on, label, 8 reserved.
int Mutant::ReadFields(const AKFile& file) {
  unsigned int count = 0;
  double alpha = 0;
  unsigned char on = 0;
  AKString label;
  int status = AKFileReadUInt32(file, &count, 0);
  unsigned char bytes[4];
  std::memcpy(bytes, &count, sizeof(bytes));
  if (Has("dies-of-noise")) CrashIf(std::set<int>(bytes, bytes + 4).size() == 4 && bytes[1] > 1);
  if (status == 0) status = AKFileReadFloat32(file, &alpha, 0);
  if (status == 0) status = AKFileReadUInt8(file, &on);
  if (Has("dies-of-prefix")) CrashIf(status != 0);
  if (status == 0) status = AKFileReadAKString(file, &label);
  if (status == 0) status = AKFileSkip(file, kReserved);
  if (status != 0) return status;
  if (Has("dies-of-bit")) CrashIf(count > 1U << 30 && (count & 0xFFFF) < 64);
  if (Has("dies-of-bytes")) CrashIf(bytes[0] == bytes[1] && bytes[1] >= 0x7F);
  if (Has("halves-on-reading")) alpha /= 2;
  SetCount(count);
  SetAlpha(alpha);
  on_ = on != 0;
  if (!Has("keeps-old-label") || !label.IsEmpty()) label_ = label;
  return 0;
}

int Mutant::akmInitFromFile(const AKFile& file, unsigned int version) {
  isInitialised_ = true;
  if (Has("dies-of-version")) CrashIf(version > 1);
  if (Has("reads-from-start")) file.SetPos(0);
  int status = ReadFields(file);
  if (Has("reads-more")) AKFileSkip(file, 1);
  if (Has("refuses-longer") && file.HasBytes(1)) status = kRefused;
  shown_ = told_ = alpha_;
  return Has("ignores-read-status") ? 0 : status;
}

int Mutant::akmWriteToFile(AKFile& file) const {
  static unsigned int times = 0;
  unsigned long long start = 0;
  file.GetPos(&start);
  const int extra = Has("forgets-order") && setsSinceDrawn_ >= 3 ? 1 : 0;
  int status = AKFileWriteUInt32(file, static_cast<unsigned int>(count_ + extra), 0);
  if (status == 0) status = AKFileWriteFloat32(file, Has("shared-state") ? gShared : alpha_, 0);
  if (status == 0) status = AKFileWriteUInt8(file, on_ ? 1 : 0);
  if (status == 0) status = AKFileWriteAKString(file, Has("label-not-written") ? AKString() : label_);
  if (status == 0 && Has("noise") && kept_ != nullptr) status = AKFileWrite(file, kept_, kReserved);
  if (status == 0 && !(Has("noise") && kept_ != nullptr)) status = AKFileWriteZeros(file, kReserved);
  if (Has("counts-writes")) {
    AKFileSkipBack(file, 4);
    status = AKFileWriteUInt32(file, ++times, 0);
  }
  if (Has("rewinds")) file.SetPos(start);
  if (Has("writes-before") && start >= 4) {
    file.SetPos(start - 4);
    AKFileWriteUInt32(file, 0, 0);
    file.Seek(0, kAKFileWhenceEnd);
  }
  if (Has("turns-bytes")) file.SetEndianness(AKFile::kEndianBig);
  return Has("ignores-write-status") ? 0 : status;
}

// The faults in which properties are taken otherwise.
void Mutant::TakeFaulty(const AKDictionary& properties) {
  double number = 0;
  const bool isGiven = AKValueGetasFloat64(properties.GetValue(kKey_Alpha), &number, false);
  if (Has("dies-of-extremes")) CrashIf(isGiven && !(std::fabs(number) < 1e6));
  if (Has("takes-wrong-kinds") && properties.ContainsKey(kKey_Alpha) && !isGiven) SetAlpha(0);
  if (Has("resets-missing") && !isGiven) SetAlpha(0.5);
  if (Has("resets-others") && !properties.IsEmpty() && !properties.ContainsKey(kKey_Count) &&
      !properties.ContainsKey("NoSuchProperty")) {
    SetCount(5);
  }
  if (Has("halves-alpha") && isGiven) SetAlpha(alpha_ / 2);
  if (Has("creeps") && isGiven) SetAlpha(alpha_ + (alpha_ > 0 && alpha_ < 0.9 && alpha_ != 0.5 ? 0.01 : 0));
  if (Has("eats-input")) const_cast<AKDictionary&>(properties).RemoveValue("Other");
}

int Mutant::akmSetObjectProperties(const AKDictionary& properties) {
  double number = 0;
  if (AKValueGetasFloat64(properties.GetValue(kKey_Alpha), &number, true)) SetAlpha(number);
  if (Has("dies-of-extremes") || Has("creeps") || Has("halves-alpha") || Has("takes-wrong-kinds") ||
      Has("resets-missing") || Has("resets-others") || Has("eats-input")) {
    TakeFaulty(properties);
  }
  told_ = alpha_;
  if (setsSinceDrawn_ >= 0) ++setsSinceDrawn_;
  AKValueGetasBool(properties.GetValue(kKey_On), &on_, true);
  properties.GetValue(kKey_Label).GetasAKString(&label_);
  if (AKValueGetasFloat64(properties.GetValue(kKey_Count), &number, true)) SetCount(number);
  return Has("refuses-but-takes") && number > 20 ? kRefused : 0;
}

int Mutant::akmGetObjectProperties(AKDictionary* properties) const {
  static int times = 0;
  if (Has("clears-output")) properties->Clear();
  double alpha = alpha_;
  if (Has("shared-state")) alpha = gShared;
  if (Has("tells-old")) alpha = told_;
  properties->SetValue(kKey_Alpha, AKValueSetasFloat64(alpha));
  AKValue value;
  AKValueSetasUInt(&value, static_cast<unsigned int>(count_ + (Has("counts-questions") ? ++times : 0)));
  properties->SetValue(kKey_Count, value);
  if (Has("changes-kind") && !on_) {
    properties->SetValue(kKey_On, AKValueSetasAKString("no"));
  } else {
    properties->SetValue(kKey_On, AKValueSetasBool(on_));
  }
  properties->SetValue(Has("host-name") ? "Bounds" : kKey_Label, AKValueSetasAKString(label_));
  return 0;
}

AGRect Mutant::akmGetNaturalBounds() const {
  return Has("no-natural-bounds") ? AGRect{1, 1, 0, 0} : AGRect{0, 0, 1, 1};
}

// Alpha stands in a field and on a slider.
AKGUIDesc* Mutant::BuildInspectorGUIDesc() {
  NKLocaleSetDomain(Has("domain-elsewhere") ? "../Mutant" : kLocaleDomain);
  auto panel = std::make_unique<AKGUIDesc>("-multisel:1");
  const char* title = NKLocaleGetString("Alpha");
  char buffer[64];
  if (Has("short-buffer")) std::strcpy(buffer, title);
  if (Has("text-as-format")) std::snprintf(buffer, sizeof(buffer), title, 1, 2, 3, 4, 5, 6);
  const char* const label = Has("bare-title") ? "-type:StaticText -pos:(10;7) -dim:(80;16) -title:%s"
                                              : "-type:StaticText -pos:(10;7) -dim:(80;16) -title:\"%s\"";
  if (Has("text-as-format")) title = "Alpha";
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  panel->NewController(label, Has("empty-title") ? "" : title);
#pragma GCC diagnostic pop
  panel->NewController("-id:1 -type:EditNum -pos:(94;2) -dim:(48;22) -prec:2 %s", Has("unknown-item") ? "-dial:3" : "");
  panel->NewController("-id:2 -type:Slider -pos:(%d;2) -dim:(%d;20) -range:(0;1)", Has("overlapping") ? 100 : 144,
                       Has("no-size") ? 0 : 90);
  panel->NewController("-id:%d -type:EditNum -pos:(94;30) -dim:(48;22) -prec:0 -range:%s", Has("same-id") ? 1 : 3,
                       Has("range-turned") ? "(20;1)" : "(1;20)");
  panel->NewController("-id:4 -type:CheckBox -pos:(144;30) -dim:(90;20) -title:\"%s\"", NKLocaleGetString("On"));
  panel->NewController("-id:5 -type:EditText -pos:(10;%d) -dim:(224;22)", Has("below-panel") ? 500 : 58);
  panel->SetPanelSize(0, 86);
  return panel.release();
}

void Mutant::Show(AKGUIDesc& panel) const {
  const double alpha = Has("shows-old") ? shown_ : alpha_;
  panel.SetValueAsFloat64(1, Has("shows-percent") ? alpha * 100 : alpha);
  panel.SetValueAsFloat64(2, alpha);
  panel.SetValueAsUInt(3, static_cast<unsigned int>(count_));
  if (!Has("fills-all-but-one")) panel.SetValueAsBool(4, on_);
  panel.SetValueAsString(5, label_);
}

void Mutant::Take(AKGUIDesc& panel, unsigned int control) {
  const double number = panel.GetValueAsFloat64(control);
  if (Has("dies-of-absurd")) CrashIf(!(std::fabs(number) < 1e6));
  if (control == 1 || control == 2) SetAlpha(number);
  if (control == 3) SetCount(number);
  if (control == 4) on_ = panel.GetValueAsBool(4);
  if (control == 5) label_ = panel.GetValueAsString(5);
  if (Has("takes-unknown-control") && control > 5) SetAlpha(0.125);
  shown_ = alpha_;
}

int Mutant::akmInspector(AKGUIDesc& panel, AKGUIEvent& event) {
  static const Mutant* last = nullptr;
  if (!Has("no-domain")) NKLocaleSetDomain(Has("domain-elsewhere") ? "../Mutant" : kLocaleDomain);
  if (event.kind == AKGUIEvent::kFillControls) Show(panel);
  if (event.kind == AKGUIEvent::kFillControls && Has("fill-changes")) SetAlpha(0.125);
  if (event.kind != AKGUIEvent::kFillControls && event.kind != AKGUIEvent::kControlChanged && Has("takes-any-event")) {
    SetAlpha(0.125);
  }
  if (event.kind != AKGUIEvent::kControlChanged) return 0;
  if (Has("one-of-several") && last != nullptr && last != this) {
    last = this;
    return 0;
  }
  last = this;
  Take(panel, event.ctrlID);
  if (event.ctrlID < 1 || event.ctrlID > 5) return 0;
  if (!Has("nameless")) event.actionName = AKString(NKLocaleGetString("Change Mutant"));
  if (!Has("does-not-show")) Show(panel);
  return Has("refuses-change") && event.ctrlID == 3 ? kRefused : 0;
}

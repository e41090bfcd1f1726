#include "host/validator/Subject.h"

#include <algorithm>
#include <cstdio>

#include "graphics/context/AKDrawEvent.h"
#include "host/model/ObjectProperties.h"
#include "host/tables/SlotCall.h"
#include "kit/streams/AKFile.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKValue.h"

namespace host::validator {

std::function<void()> gBeforeCall;
const AKHostServiceRecord* gServices = nullptr;

namespace {

constexpr std::size_t kMostShown = 300;

std::string Shortened(std::string text) {
  if (text.size() <= kMostShown) return text;
  const std::string count = std::to_string(text.size());
  text.resize(kMostShown);
  return text + "... (" + count + " bytes)";
}

std::string WholeTextOf(const AKDictionary& properties) {
  AKValue value;
  value.SetasAKDictionary(properties);
  return TextOf(value);
}

}  // namespace

HostPanel* ClassCalls::Panel() const { return Has(kAKMethodInspector) ? HostPanel::Of(entry_.panel.get()) : nullptr; }

bool ClassCalls::Has(unsigned int slot) const { return HasSlot(Record(), slot); }

std::string ClassCalls::Of() const { return std::string(" of an object of class \"") + Record().classID.chars + "\""; }

void ClassCalls::Do(const std::string& what) const {
  trial_.Do(what + Of());
  if (gBeforeCall) gBeforeCall();
}

Instance ClassCalls::Construct() const {
  Do("the class constructor");
  Instance object(Record().constructor());
  if (!object) trial_.Fail("a new instance", "null");
  return object;
}

Instance ClassCalls::Make(const std::string& arguments, int* status) const {
  Instance object = Construct();
  Do("akmInitWithArgs \"" + Shortened(arguments) + "\"");
  *status = 0;
  if (!Has(kAKMethodInitWithArgs)) return object;
  const AKArgs args(AKString(arguments.c_str()), true);
  *status = CallSlot<int, const AKArgs&>(Record(), kAKMethodInitWithArgs, object.get(), args);
  if (*status != 0) object.reset();
  return object;
}

Instance ClassCalls::Make(const std::string& arguments) const {
  int status = 0;
  Instance object = Make(arguments, &status);
  if (!object) trial_.Fail("status 0", StatusText(status));
  return object;
}

int ClassCalls::Set(const Instance& object, const AKDictionary& properties) const {
  Do("akmSetObjectProperties " + TextOfAll(properties));
  if (!Has(kAKMethodSetObjectProperties)) return 0;
  return CallSlot<int, const AKDictionary&>(Record(), kAKMethodSetObjectProperties, object.get(), properties);
}

int ClassCalls::Set(const Instance& object, const AKString& key, const AKValue& value) const {
  AKDictionary properties;
  properties.SetValue(key, value);
  return Set(object, properties);
}

AKDictionary ClassCalls::Get(const Instance& object) const {
  AKDictionary properties;
  if (!Has(kAKMethodGetObjectProperties)) return properties;
  Do("akmGetObjectProperties");
  const int status = CallSlot<int, AKDictionary*>(Record(), kAKMethodGetObjectProperties, object.get(), &properties);
  if (status != 0) trial_.Fail("status 0", StatusText(status));
  return properties;
}

int ClassCalls::WriteTo(const Instance& object, AKFile& file) const {
  Do("akmWriteToFile");
  if (!Has(kAKMethodWriteToFile)) return 0;
  return CallSlot<int, AKFile&>(Record(), kAKMethodWriteToFile, object.get(), file);
}

Bytes ClassCalls::Write(const Instance& object) const {
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  const int status = WriteTo(object, file);
  if (status != 0) trial_.Fail("status 0", StatusText(status));
  const void* data = nullptr;
  unsigned long long size = 0;
  file.GetMemoryStreamDataPtr(&data, &size);
  return data == nullptr ? Bytes() : Bytes(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

int ClassCalls::ReadFrom(const Instance& object, const AKFile& file, unsigned int version) const {
  if (!Has(kAKMethodInitFromFile)) return 0;
  return CallSlot<int, const AKFile&, unsigned int>(Record(), kAKMethodInitFromFile, object.get(), file, version);
}

int ClassCalls::Read(const Instance& object, const Bytes& record, unsigned int version, std::size_t* rest) const {
  AKFile file(record.data(), static_cast<unsigned int>(record.size()));
  file.OpenForRead();
  Do("akmInitFromFile, version " + std::to_string(version) + ", " + TextOfBytes(record));
  const int status = ReadFrom(object, file, version);
  unsigned long long position = 0;
  file.GetPos(&position);
  if (rest != nullptr) *rest = record.size() - std::min<std::size_t>(record.size(), position);
  return status;
}

Instance ClassCalls::MakeFrom(const Bytes& record) const {
  Instance object = Construct();
  const int status = Read(object, record);
  if (status != 0) trial_.Fail("status 0 for a record of its own", StatusText(status));
  return object;
}

int ClassCalls::Draw(const Instance& object, const AGContext& context, const AKDrawEvent& event) const {
  if (!Has(kAKMethodDraw)) return 0;
  char place[200];
  std::snprintf(place, sizeof(place), "akmDraw into (%.6g, %.6g, %.6g, %.6g), angle %.6g", event.bounds.x0,
                event.bounds.y0, event.bounds.x1, event.bounds.y1, event.angle);
  Do(place);
  return CallSlot<int, const AGContext&, const AKDrawEvent&>(Record(), kAKMethodDraw, object.get(), context, event);
}

int ClassCalls::Send(const Instance& object, unsigned int kind, unsigned int control, AKString* actionName) const {
  Do("akmInspector, event kind " + std::to_string(kind) + ", control " + std::to_string(control));
  AKGUIEvent event;
  event.kind = kind;
  event.ctrlID = control;
  const int status =
      CallSlot<int, AKGUIDesc&, AKGUIEvent&>(Record(), kAKMethodInspector, object.get(), *entry_.panel, event);
  if (actionName != nullptr) *actionName = event.actionName;
  return status;
}

Subject::Subject(Trial& trial) : Subject(trial, gServices != nullptr ? *gServices : Host::Instance().ServiceRecord()) {}

Subject::Subject(Trial& trial, const AKHostServiceRecord& record, const std::string& file) : library_(trial, file) {
  const std::size_t first = Host::Instance().Classes().Classes().size();
  trial.Do("pluginMain with the host's services");
  if (gBeforeCall) gBeforeCall();
  AKHostServiceRecord own = record;
  const int status = library_.Start(&own);
  if (status != 0) trial.Fail("status 0", StatusText(status));
  const auto& all = Host::Instance().Classes().Classes();
  for (std::size_t i = first; i < all.size(); ++i) classes_.emplace_back(trial, all[i]);
  if (classes_.empty()) trial.Fail("a class is registered", "none is");
}

void ForEachClass(Trial& trial, std::initializer_list<unsigned int> slots,
                  const std::function<void(const ClassCalls& cls)>& f) {
  static const auto* const subject = new Subject(trial);  // never ends: the process does
  bool isAny = false;
  for (const ClassCalls& cls : subject->Classes()) {
    if (!std::all_of(slots.begin(), slots.end(), [&cls](unsigned int slot) { return cls.Has(slot); })) continue;
    isAny = true;
    f(cls);
  }
  if (!isAny) trial.Skip("no class has such a method");
}

void ForEachPanel(Trial& trial, const std::function<void(const ClassCalls& cls, HostPanel& panel)>& f) {
  bool isAny = false;
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    HostPanel* const panel = cls.Panel();
    if (panel == nullptr) return;
    isAny = true;
    f(cls, *panel);
  });
  if (!isAny) trial.Skip("no class has an inspector panel");
}

std::string TextOfAll(const AKDictionary& properties) { return Shortened(WholeTextOf(properties)); }

bool IsSame(const AKDictionary& one, const AKDictionary& other) {
  return one.IsEqual(other) || WholeTextOf(one) == WholeTextOf(other);
}

bool State::operator==(const State& other) const {
  return record == other.record && IsSame(properties, other.properties);
}

std::string TextOfBytes(const Bytes& bytes) {
  constexpr std::size_t kMost = 48;
  std::string text = std::to_string(bytes.size()) + " bytes:";
  char digits[4];
  for (std::size_t i = 0; i < std::min(bytes.size(), kMost); ++i) {
    std::snprintf(digits, sizeof(digits), " %02x", static_cast<unsigned int>(static_cast<unsigned char>(bytes[i])));
    text += digits;
  }
  return bytes.size() > kMost ? text + " ..." : text;
}

std::string StatusText(int status) { return "status " + std::to_string(status); }

State StateOf(const ClassCalls& cls, const Instance& object) {
  return {cls.Has(kAKMethodWriteToFile) ? cls.Write(object) : Bytes(), cls.Get(object)};
}

std::string TextOfState(const State& state) {
  return TextOfAll(state.properties) + ", record of " + TextOfBytes(state.record);
}

}  // namespace host::validator

// A bundle whose objects are wrong in the way that they are told to be, by "-fault:WORD" or the property "Fault". A
// fault in OBJECTHOST_FAULT is one of the bundle itself, while it starts.
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <new>
#include <sstream>
#include <string_view>

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"
#include "kit/streams/AKFile.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueHelpers.h"

namespace {

constexpr int kOwnStatus = -4711;

const AKString kKey_Fault("Fault");
const AKString kKey_Number("Number");
const AKString kKey_Fixed("Fixed");

bool StartsWith(const char* fault) {
  const char* wanted = std::getenv("OBJECTHOST_FAULT");
  return wanted != nullptr && std::string_view(wanted) == fault;
}

// The process that tries bundles has a word for it in its command line.
bool IsProbe() {
  std::ifstream file("/proc/self/cmdline");
  std::stringstream line;
  line << file.rdbuf();
  return line.str().find("--probe") != std::string::npos;
}

class Faulty final : public AKObjectClass<Faulty, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "tFaulty";
  static constexpr char kClassName[] = "Faulty";
  static constexpr char kLocaleDomain[] = "Faulty";
  static const char* DisplayName() { return kClassName; }

  int akmInitWithArgs(const AKArgs& args) {
    fault_ = args.GetParam("-fault:");
    return 0;
  }

  // The fault's name, a number, and 8 bytes that must be 0.
  int akmInitFromFile(const AKFile& file, unsigned int version) {
    if (version != 1) return AKLogError(kOwnStatus, "A record of version %u", version);
    int status = AKFileReadAKString(file, &fault_);
    if (status == 0) status = AKFileReadFloat64(file, &number_, 0);
    double rest = 0;
    if (status == 0) status = AKFileReadFloat64(file, &rest, 0);
    if (status == 0 && rest != 0) status = kOwnStatus;
    if (Has("read")) status = AKLogError(kOwnStatus, "It was told not to read");
    return status;
  }

  int akmWriteToFile(AKFile& file) const {
    if (StartsWith("write-crash") && !IsProbe()) raise(SIGSEGV);
    if (Has("write")) return AKLogError(kOwnStatus, "It was told not to write");
    unsigned long long start = 0;
    file.GetPos(&start);
    AKFileWriteAKString(file, fault_);
    if (Has("endian")) file.SetEndianness(AKFile::kEndianBig);
    AKFileWriteFloat64(file, number_, 0);
    if (!Has("short")) AKFileWriteFloat64(file, 0, 0);
    if (Has("seek")) file.SetPos(0);
    if (Has("cut")) file.SetFileSize(start / 2);
    if (Has("overwrite")) {
      file.SetPos(start >= 16 ? start - 16 : 0);
      AKFileWriteFloat64(file, 1e300, 0);
    }
    return 0;
  }

  int akmDelete() { return 0; }

  int akmSetObjectProperties(const AKDictionary& properties) {
    if (Has("refuse")) return kOwnStatus;
    AKValueGetasFloat64(properties.GetValue(kKey_Number), &number_, true);
    properties.GetValue(kKey_Fault).GetasAKString(&fault_);
    return 0;
  }

  int akmGetObjectProperties(AKDictionary* properties) const {
    properties->SetValue(kKey_Fault, AKValueSetasAKString(fault_));
    properties->SetValue(kKey_Number, AKValueSetasFloat64(number_));
    properties->SetValue(kKey_Fixed, AKValueSetasFloat64(3));
    return 0;
  }

  int akmDraw(const AGContext& context, const AKDrawEvent& event) const {
    if (Has("draw")) return AKLogError(kOwnStatus, "It was told not to draw");
    if (Has("draw-crash")) raise(SIGSEGV);
    AGContext copy(context);
    event.SetupContextWithRecommendedBrushAndPen(&copy);
    copy.DrawRect(event.bounds);
    return 0;
  }

  AGRect akmGetNaturalBounds() const { return {0, 0, 1, 1}; }

 private:
  bool Has(const char* word) const { return fault_ == word; }

  AKString fault_;
  double number_ = 1;
};

void ForkAndStay() {
  if (fork() != 0) return;
  for (;;) pause();
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int pluginMain(void* hostServiceRecord) {
  if (StartsWith("exit") || (StartsWith("probe-exit") && IsProbe())) std::exit(0);
  if (StartsWith("fork")) ForkAndStay();
  if (StartsWith("hang")) pause();
  if (StartsWith("memory")) {
    // A byte of each block: to fill gigabytes takes a busy machine longer than it waits for a bundle.
    for (;;) *static_cast<volatile char*>(std::malloc(1 << 26)) = 1;
  }
  static AKClass* record = nullptr;
  const int status = Faulty::Register(hostServiceRecord, &record);
  if (status != 0) return status;
  if (StartsWith("print")) {
    std::puts("printed by the bundle");
    static_cast<void>(write(STDOUT_FILENO, "written by it\n", 14));
  }
  if (StartsWith("odd")) record->methods[kAKMethodDraw].function = reinterpret_cast<std::uintptr_t>(&pluginMain) | 1;
  if (StartsWith("no-write")) record->methods[kAKMethodWriteToFile] = {};
  AKLog("it has started");
  return 0;
}

#include "torture/Puppet.h"

#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileRecords.h"
#include "kit/text/AKArgs.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueHelpers.h"
#include "torture/Lives.h"

namespace torture {

Puppet::Orders Puppet::orders;
Puppet::Seen Puppet::seen;

AKObject* Puppet::Construct() { return orders.refusesConstruction ? nullptr : _ClassCtor(); }

Puppet::Puppet() {
  Lives::Made(this);
  seen.made = this;
}

Puppet::~Puppet() {
  ++seen.destructions;
  Lives::Destroyed(this);
}

int Puppet::akmInitWithArgs(const AKArgs& args) {
  Lives::Initialises(this, "slot.akmInitWithArgs");
  seen.arguments.Clear();
  for (unsigned int i = 0; i < args.Count(); ++i) seen.arguments += (i == 0 ? "" : "|") + args.GetArg(i);
  if (orders.within) orders.within();
  return orders.init;
}

int Puppet::akmInitFromFile(const AKFile& file, unsigned int version) {
  Lives::Initialises(this, "slot.akmInitFromFile");
  ++seen.reads;
  seen.version = version;
  if (orders.read != 0) return orders.read;
  const int status = AKFileReadFloat64(file, &number, 0);
  return status == 0 ? AKFileReadAKString(file, &text) : status;
}

int Puppet::akmWriteToFile(AKFile& file) const {
  Lives::Uses(this, "slot.akmWriteToFile");
  if (orders.write != 0) return orders.write;
  const int status = AKFileWriteFloat64(file, number, 0);
  return status == 0 ? AKFileWriteAKString(file, text) : status;
}

int Puppet::akmDelete() {
  ++seen.deletions;
  Lives::Ends(this);
  return 0;
}

int Puppet::akmSetObjectProperties(const AKDictionary& properties) {
  Lives::Initialises(this, "slot.akmSetObjectProperties");
  AKValueGetasFloat64(properties.GetValue("Number"), &number, false);
  AKValueGetasAKString(properties.GetValue("Text"), &text, false);
  return orders.set;
}

int Puppet::akmGetObjectProperties(AKDictionary* properties) const {
  Lives::Uses(this, "slot.akmGetObjectProperties");
  if (orders.get != 0) return orders.get;
  properties->SetValue("Text", AKValueSetasAKString(text));
  return properties->SetValue("Number", AKValueSetasFloat64(number));
}

// It has no akmDelete that would tell.
Bare::Bare() { Lives::Made(this); }
Bare::~Bare() {
  Lives::Ends(this);
  Lives::Destroyed(this);
}

}  // namespace torture

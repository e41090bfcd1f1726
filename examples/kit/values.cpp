// Values and dictionaries: how properties travel between an object, its host and a file.
#include <cstdio>

#include "kit/streams/AKFile.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"
#include "kit/values/AKValueHelpers.h"
#include "kit/values/AKValueRecord.h"

namespace {

// A number in memory, a word in a dictionary.
const AKValueEnums kCaps[] = {{0, "Butt"}, {1, "Square"}, {2, "Round"}, {0, ""}};

}  // namespace

int main() {
  AKDictionary properties;
  properties.SetValue("Pen.Size", AKValueSetasFloat64(2.5));
  properties.SetValue("Pen.Cap", AKValueSetasEnum(2, kCaps));
  properties.SetValue("Points", AKValueSetasUInt(7));

  // Entries are in the order of their keys; a dotted path leads into those that are dictionaries.
  for (AKDictionary::Cursor at(properties); at.IsValid(); at.Next()) std::printf("%s ", at.Key().CStr());
  std::printf("(%u)\n", properties.Count());  // prints: Pen Points (2)
  std::printf("%g, %s\n", AKValueGetasFloat64(properties.GetValue("Pen.Size"), true),
              properties.GetValue("Pen.Cap").GetasAKString()->CStr());  // prints: 2.5, Round

  // With conversion a text that reads as a number is one; without it only a number is.
  AKValue value;
  value.SetasAKString("12");
  long long number = 0;
  const bool strict = value.GetasInteger(&number, false);
  const bool converted = value.GetasInteger(&number, true);
  std::printf("%d %d %lld\n", strict, converted, number);  // prints: 0 1 12

  AKValueArray list;
  list.Append(value);
  list.Append(AKValueSetasBool(true));
  properties.SetValue("List", AKValueSetasAKValueArray(list));

  // The same record whoever writes it; AKRecordWriter and AKRecordReader are what the classes use themselves.
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  AKRecordWriter writer(file);
  int status = writer.Write(properties);
  file.SetPos(0);
  AKDictionary back;
  AKRecordReader reader(file);
  if (status == 0) status = reader.Read(&back);
  std::printf("%d %d\n", status, back == properties);  // prints: 0 1
}

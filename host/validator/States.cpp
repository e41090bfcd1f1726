#include "host/validator/States.h"

#include "host/validator/Values.h"

namespace host::validator {

Instance RandomObject(const ClassCalls& cls, Dice* dice) {
  Instance object = cls.Make(dice->Below(2) == 0 ? "-default" : "");
  AKDictionary properties;
  for (const Entry& entry : EntriesOf(cls.Get(object))) {
    if (dice->Below(8) != 0) properties.SetValue(entry.key, RandomValue(entry.value, dice));
  }
  cls.Set(object, properties);
  return object;
}

}  // namespace host::validator

#include <sys/random.h>

#include "kit/text/AKString.h"
#include "kit/text/AKTextConversions.h"

AKString AKStringGenerateUUID() {
  unsigned char bytes[16];
  if (getentropy(bytes, sizeof(bytes)) != 0) return {};
  // RFC 4122, section 4.4: version 4, variant 1.
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
  AKString text;
  unsigned int done = 0;
  for (const unsigned int count : {4U, 2U, 2U, 2U, 6U}) {
    text.Append(AKStringHexaFromBinaryData(bytes + done, count, done == 0 ? "" : "-"));
    done += count;
  }
  return text;
}

// Strings: cheap copies, searching, cutting, splitting; UTF-16 for those who need it.
#include <cstdio>

#include "kit/containers/AKSharedBytes.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"
#include "kit/text/AKStringEncoding.h"
#include "kit/text/AKUniString.h"

int main() {
  // A copy shares the bytes until one of the two is changed.
  AKString name("Rounded rectangle");
  AKString copy = name;
  copy.ReplaceFirst("Rounded ", "", 0);
  copy.ToCapitalized();
  std::printf("%s, %s\n", name.CStr(), copy.CStr());  // prints: Rounded rectangle, Rectangle

  unsigned int position = 0;
  const bool found = name.Find("rect", 0, &position);
  std::printf("%d at %u, %s\n", found, position, name.BeforeFirst(" ").CStr());  // prints: 1 at 8, Rounded

  // Splitting trims blanks; joining puts a separator between.
  AKStringArray words = AKString("red, green ;blue").SplitToArray();
  std::printf("%u: %s\n", words.Count(), words.ConcatToString("+").CStr());  // prints: 3: red+green+blue

  AKString line;
  line.Assignf("%.2f mm", 1.5).Append('!');
  std::printf("%s %u\n", line.CStr(), line.Length());  // prints: 1.50 mm! 8

  // In memory a character is one byte of Mac OS Roman, on file UTF-8: e with an acute accent is 8E, then C3 A9.
  const AKString stored = AKStringCopyWithEncoding("\x8E", kAKStringEncodingMacRoman, kAKStringEncodingUTF8);
  std::printf("%02X %02X\n", stored[0] & 0xFF, stored[1] & 0xFF);                         // prints: C3 A9
  std::printf("U+%04X\n", static_cast<unsigned>(AKUniStringFromAsciiString("\x8E")[0]));  // prints: U+00E9

  // Below a string lie its shared bytes: a header, an AKSharedBuffer, and the bytes behind it. The empty handle leads
  // to a static buffer.
  AKSharedBytes bytes;
  const AKEmptySharedBuffer& empty = kAKEmptySharedBuffer;
  std::printf("%d\n", bytes.Data() == &empty.terminator);  // prints: 1
  bytes.Assign("abc", 3);
  const AKSharedBytes shared = bytes;
  const AKSharedBuffer* header = reinterpret_cast<const AKSharedBuffer*>(shared.Data()) - 1;
  std::printf("%u owners of %u bytes\n", header->owners.load(), header->length);  // prints: 2 owners of 3 bytes
}

// Argument lists and splitting: any text gives pieces that are parts of it.
#include <cstdint>
#include <cstdlib>

#include "kit/text/AKArgs.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const AKString text(reinterpret_cast<const char*>(data), static_cast<unsigned int>(size));
  const AKString cText(text.CStr());
  const AKArgs kept(text, false);
  const AKArgs stripped(text, true);
  for (unsigned int i = 0; i < kept.Count(); ++i) {
    const AKString& argument = kept.GetArg(i);
    AKString rest;
    if (!argument.IsEmpty() && !cText.Contains(argument, true)) std::abort();
    if (!kept.GetParam(argument.SubString(0, 3), &rest) || stripped.Count() > kept.Count()) std::abort();
  }
  // Without trimming, the pieces and their separators are the text again, but for separators at the start.
  const AKString joined = text.SplitToArray(";", "").ConcatToString(";");
  if (!text.EndsWith(joined)) std::abort();
  for (const AKString& piece : text.SplitToArray()) {
    if (piece.Find(",", 0, nullptr) || AKString(piece).RemoveExtraSpacesAndTabs()) std::abort();
    piece.GetToken(0);
    AKString(piece).RemoveExtraQuotes();
  }
  return 0;
}

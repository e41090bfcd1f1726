#include "host/panels/Description.h"

#include <string_view>

#include "host/text/ParseNumber.h"
#include "kit/log/AKLog.h"
#include "kit/text/AKArgs.h"
#include "kit/text/AKStringArray.h"

namespace host {
namespace {

std::string_view ViewOf(const AKString& text) { return {text.CStr(), text.Length()}; }

}  // namespace

bool ParseDescription(const AKString& description, const std::function<bool(const AKString& item)>& take) {
  const AKArgs items(description, true);
  AKString strange;
  for (unsigned int i = 0; i < items.Count(); ++i) {
    const AKString& item = items.GetArg(i);
    if (item.IsEmpty() || take(item)) continue;  // blanks at the end make an empty item
    if (!strange.IsEmpty()) strange += ' ';
    strange += item;
  }
  if (strange.IsEmpty()) return true;
  AKLog("description of a panel or control: not understood: %s", strange.CStr());
  return false;
}

bool ParseInteger(const AKString& text, int* value) { return ParseWhole(ViewOf(text), value); }
bool ParseUnsigned(const AKString& text, unsigned int* value) { return ParseWhole(ViewOf(text), value); }

bool ParseNumber(const AKString& text, double* value) { return ParseFinite(ViewOf(text), value); }

bool ParsePair(const AKString& text, AGPoint* pair) {
  const std::string_view whole = ViewOf(text);
  const std::size_t middle = whole.find(';');
  if (whole.size() < 5 || whole.front() != '(' || whole.back() != ')' || middle == std::string_view::npos) return false;
  AGPoint parsed;
  if (!ParseFinite(whole.substr(1, middle - 1), &parsed.x)) return false;
  if (!ParseFinite(whole.substr(middle + 1, whole.size() - middle - 2), &parsed.y)) return false;
  *pair = parsed;
  return true;
}

}  // namespace host

#include "host/panels/Description.h"

#include <string>
#include <string_view>

#include "host/text/ParseNumber.h"
#include "kit/text/AKArgs.h"

namespace host {
namespace {

constexpr char kBlanks[] = " \t\n\r";

constexpr struct {
  const char* word;
  bool state;
} kSwitchWords[] = {{"on", true},   {"off", false},   {"1", true},   {"0", false},
                    {"true", true}, {"false", false}, {"yes", true}, {"no", false}};

std::string_view ViewOf(const AKString& text) { return {text.CStr(), text.Length()}; }

}  // namespace

AKString ReadDescription(const AKString& description, const std::function<bool(const AKString& item)>& take) {
  const AKArgs items(description, true);
  AKString strange;
  for (unsigned int i = 0; i < items.Count(); ++i) {
    const AKString& item = items.GetArg(i);
    if (item.IsEmpty() || take(item)) continue;  // blanks at the end make an empty item
    if (!strange.IsEmpty()) strange += ' ';
    strange += item;
  }
  return strange;
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

bool ParseSwitch(const AKString& text, bool* state) {
  for (const auto& entry : kSwitchWords) {
    if (!(text == entry.word)) continue;
    *state = entry.state;
    return true;
  }
  return false;
}

AKStringArray ParseList(const AKString& text) {
  AKStringArray list;
  if (text.IsEmpty()) return list;
  std::string piece;
  const auto finish = [&] {
    const std::size_t first = piece.find_first_not_of(kBlanks);
    const std::size_t last = piece.find_last_not_of(kBlanks);
    list.Append(first == std::string::npos ? AKString() : AKString(piece.substr(first, last - first + 1)));
    piece.clear();
  };
  const std::string_view whole = ViewOf(text);
  for (std::size_t i = 0; i < whole.size(); ++i) {
    const bool escapes = whole[i] == '\\' && i + 1 < whole.size() && (whole[i + 1] == ';' || whole[i + 1] == '\\');
    if (escapes) {
      piece += whole[++i];
    } else if (whole[i] == ';') {
      finish();
    } else {
      piece += whole[i];
    }
  }
  finish();
  return list;
}

}  // namespace host

#include "kit/text/AKArgs.h"

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

/// Reads the token at `*position` and moves there to the character that ends it.
AKString ReadToken(const char** position, bool stripQuotes) {
  const char* p = *position;
  bool quoted = false;
  bool hasQuotes = false;
  for (; *p != '\0' && (quoted || !IsBlank(*p)); ++p) {
    if (*p != '"') continue;
    quoted = !quoted;
    hasQuotes = true;
  }
  AKString token(*position, static_cast<unsigned int>(p - *position));
  if (stripQuotes && hasQuotes) token.RemoveAll("\"", 0);
  *position = p;
  return token;
}

/// Adds the arguments of a text to an empty list.
void _LowStringToArgs(const char* text, bool stripQuotes, AKStringArray* arguments) {
  while (*text != '\0') {
    while (IsBlank(*text)) ++text;
    AKString token = ReadToken(&text, stripQuotes);
    if (arguments->IsEmpty() && token.IsEmpty()) return;
    arguments->Append(std::move(token));
    if (*text != '\0') ++text;
  }
}

}  // namespace

AKArgs::AKArgs(int argc, const char** argv) {
  if (argv == nullptr) return;
  for (int i = 0; i < argc; ++i) arguments_.Append(AKString(argv[i]));
}

AKArgs::AKArgs(const char* text, bool stripQuotes) {
  if (text != nullptr) _LowStringToArgs(text, stripQuotes, &arguments_);
}

const char* AKArgs::argv(int index) const {
  if (index < 0 || static_cast<unsigned int>(index) >= Count()) return nullptr;
  return arguments_[static_cast<unsigned int>(index)].CStr();
}

const AKString& AKArgs::GetArg(unsigned int index) const { return index < Count() ? arguments_[index] : kAKNullString; }

bool AKArgs::IsParam(const AKString& key) const { return GetParam(key, nullptr); }

AKString AKArgs::GetParam(const AKString& key) const {
  AKString value;
  GetParam(key, &value);
  return value;
}

bool AKArgs::GetParam(const AKString& key, AKString* value) const {
  AKString rest;  // not `value` itself, which may be the key
  bool found = false;
  for (unsigned int i = 0; i < Count() && !found; ++i) found = arguments_[i].StartsWith(key, &rest);
  if (value != nullptr && !arguments_.IsEmpty()) value->Swap(&rest);
  return found;
}

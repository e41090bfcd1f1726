// AKArgs: an argument list, made from an argument vector or by splitting a text at blanks.
//
// Arguments follow the convention "-key:value". Keys are given with their "-" and, when a value follows, their ":", and
// are compared as case-sensitive prefixes: "-default" also matches the argument -defaultSize:3.
#pragma once

#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"

class AKArgs {
 public:
  /// An empty list.
  AKArgs() = default;
  /// One argument per entry, argv[0] included. A null vector or a count below 1 gives an empty list.
  AKArgs(int argc, const char** argv);
  /// Splits at spaces and tabs outside double quotes; the quote characters are dropped when `stripQuotes` is set. A
  /// text that begins with an empty argument gives an empty list, one that ends in two or more blanks an empty last
  /// argument.
  AKArgs(const char* text, bool stripQuotes);
  /// The same of a string.
  AKArgs(const AKString& text, bool stripQuotes) : AKArgs(text.CStr(), stripQuotes) {}

  /// The number of arguments.
  unsigned int Count() const { return arguments_.Count(); }
  /// The argument as a C string owned by this list, null when `index` is out of range.
  const char* argv(int index) const;
  /// The argument, or kAKNullString when `index` is out of range.
  const AKString& GetArg(unsigned int index) const;

  /// True when any argument begins with `key`.
  bool IsParam(const AKString& key) const;
  /// What follows `key` in the first argument that begins with it; empty when none does.
  AKString GetParam(const AKString& key) const;
  /// As above, telling whether there was one. Without a match `value` is emptied, unless the list is empty: then it is
  /// left alone. `value` may be null.
  bool GetParam(const AKString& key, AKString* value) const;

 private:
  AKStringArray arguments_;
};

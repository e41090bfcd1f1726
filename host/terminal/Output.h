// What commands print.
//
// Programs read it, so nothing else may come between: once the program has taken its standard output over, what bundles
// print goes to standard error.
#pragma once

#include <string>

namespace host {

class Output {
 public:
  /// From now on nobody but this class writes to standard output.
  static void TakeOver();
  static void Write(const std::string& text);
  __attribute__((format(printf, 1, 2))) static void Print(const char* format, ...);
  static void Flush();
  /// Writes what is left. An errno when anything could not be written since the beginning, as to a full disk; else 0.
  static int Finish();
  /// Where it writes to, for a program that is to print beside this one.
  static int Descriptor();
};

}  // namespace host

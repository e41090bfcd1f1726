// What the file of a shared library says of itself, read without loading it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/text/Problem.h"

namespace host::validator {

class ElfFile {
 public:
  struct Symbol {
    std::string name;
    std::uint64_t address = 0;
    std::uint64_t size = 0;
    unsigned char binding = 0;  ///< STB_...
    unsigned char type = 0;     ///< STT_...
    bool isDefined = false;
  };

  /// Fails for what is no shared library for x86-64. Damaged tables count as empty.
  static Result<ElfFile> Read(const std::string& path);

  std::vector<Symbol> exported;      ///< defined symbols that other libraries see
  std::vector<Symbol> symbols;       ///< of the symbol table, which a stripped file has not got
  std::vector<std::string> needed;   ///< libraries that it is linked with
  std::vector<std::string> runPath;  ///< the entries of RPATH and RUNPATH
  bool hasExecutableStack = false;
  bool hasTextRelocations = false;
};

/// The function that an address of the file lies in, as it is written in C++; empty when the file does not tell.
std::string FunctionAt(const ElfFile& file, std::uint64_t address);

}  // namespace host::validator

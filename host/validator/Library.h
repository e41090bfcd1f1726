// A bundle's file, loaded by a check, and its entry.
#pragma once

#include <string>

#include "host/validator/Trial.h"
#include "kit/host/AKHostTables.h"

namespace host::validator {

class Library {
 public:
  /// Loads it. A file that can't be loaded or has no pluginMain fails the check.
  explicit Library(Trial& trial) : Library(trial, trial.Bundle()) {}
  Library(Trial& trial, const std::string& file);
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
  ~Library() { Unload(); }

  /// pluginMain's status.
  int Start(void* record) const;
  /// From now on the library stays as long as the process.
  void Keep() { handle_ = nullptr; }
  /// Takes the classes that it registered out of the host, and unloads it. Nothing for one that is unloaded.
  void Unload();
  /// Whether the file is still in memory.
  bool IsInMemory() const;
  /// Whether an address lies in the file's own code.
  bool HasCode(const void* address) const;

 private:
  Trial& trial_;
  std::string file_;
  void* handle_;
  int (*entry_)(void*);
  std::size_t firstClass_;
};

}  // namespace host::validator

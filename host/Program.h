// What the whole program knows: where it runs from, and the bundles that it loaded.
#pragma once

#include <string>
#include <vector>

namespace host {

class Program {
 public:
  /// The file of the running program; empty when the system does not tell.
  static std::string ExecutablePath();

  /// Bundles found where the program was built or installed: ../plugins and ../lib/objecthost/plugins beside the folder
  /// of the executable, every file ending in ".so", by name.
  static std::vector<std::string> DefaultBundles();

  /// The bundles that are loaded.
  static std::vector<std::string>& BundlePaths();
};

/// Runs objecthost with the words of its command line; returns the exit code.
int RunProgram(std::vector<std::string> const& words);

}  // namespace host

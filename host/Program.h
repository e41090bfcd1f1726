// What the whole program knows: where it runs from, and the bundles that it loaded.
#pragma once

#include <string>
#include <vector>

namespace host {

class BundleSet;

class Program {
 public:
  /// The file of the running program; empty when the system does not tell.
  static std::string ExecutablePath();

  /// The options about bundles that stood in front of the command.
  static const std::vector<std::string>& BundleOptions();

  /// The bundles that are loaded; there while a command runs.
  static BundleSet& Bundles();
};

/// The translations of the host and of the bundles that come with it.
void AddCatalogues();

/// Runs objecthost with the words of its command line; returns the exit code.
int RunProgram(const std::vector<std::string>& words);

}  // namespace host

// Which bundles have passed their trial, kept in the user's cache so that a bundle is tried once and not at each start.
//
// A bundle is known by its path and by the state of its file; the program that tried it counts too. What failed is not
// kept: what a bundle lacked may be there the next time. A cache that can't be read or written only costs trials.
#pragma once

#include <string>
#include <vector>

namespace host {

class ProbeMemory {
 public:
  /// `file` is the cache's; empty keeps nothing.
  ProbeMemory(std::string file, const std::string& program);

  /// The file in the user's cache folder; empty when there is no such folder.
  static std::string DefaultFile();

  bool HasPassed(const std::string& bundle) const;
  /// Call it with the state that was tried: StateOf from before the trial.
  void Remember(const std::string& bundle, const std::string& state);

  /// Size, times, device and inode of a file, as text; empty when it can't be looked at.
  static std::string StateOf(const std::string& path);

 private:
  void Save() const;

  std::string file_;
  std::string program_;
  std::vector<std::string> lines_;  // the oldest first
};

}  // namespace host

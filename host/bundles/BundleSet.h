// The bundles of a running host.
//
// Each is tried in a process of its own before it is loaded (BundleProbe.h). Bundles are searched in these folders, in
// this order; a file of a name that an earlier folder has is left out:
//
//   the folders of the environment variable OBJECTHOST_PLUGINS, separated by ":"
//   objecthost/plugins in the user's data folder
//   ../plugins and ../lib/objecthost/plugins beside the folder of the program
//
// The set unloads the last first; documents with objects of the bundles' classes must be gone before.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/bundles/Bundle.h"
#include "host/bundles/ProbeMemory.h"
#include "host/text/Problem.h"

namespace host {

class BundleSet {
 public:
  struct Skipped {
    std::string path;
    Problem reason;
  };

  /// `program` is the objecthost that tries bundles; empty to load them untried. `memory` is the file that keeps which
  /// of them have passed; empty keeps nothing.
  explicit BundleSet(std::string program, std::string memory = "")
      : memory_(std::move(memory), program), program_(std::move(program)) {}
  BundleSet(const BundleSet&) = delete;
  BundleSet& operator=(const BundleSet&) = delete;
  ~BundleSet();

  /// Fails when the bundle can't be used.
  Result<> Load(const std::string& path);
  /// LoadFound skips these files, which Load still takes.
  void LeaveOut(std::vector<std::string> files) { leftOut_ = std::move(files); }
  /// Loads every bundle of the search path. Those that can't be used are skipped, and so are those of a name that is
  /// loaded already; a folder that is there but can't be read is told as skipped too.
  void LoadFound();

  const std::vector<std::unique_ptr<Bundle>>& Loaded() const { return loaded_; }
  const std::vector<Skipped>& NotLoaded() const { return skipped_; }

  /// The search path; folders need not exist.
  std::vector<std::string> Folders() const;
  /// The files ending in ".so" along the search path, those of a folder by name.
  std::vector<std::string> Find() const { return Find(nullptr); }

 private:
  bool IsLeftOut(const std::string& file) const;
  Result<> Try(const std::string& file);
  /// The files of a folder by name; a folder that can't be read goes to `unreadable`, which may be null.
  static std::vector<std::string> FilesOf(const std::string& folder, std::vector<Skipped>* unreadable);
  std::vector<std::string> Find(std::vector<Skipped>* unreadable) const;

  ProbeMemory memory_;
  std::string program_;
  std::vector<std::unique_ptr<Bundle>> loaded_;
  std::vector<Skipped> skipped_;
  std::vector<std::string> leftOut_;
};

}  // namespace host

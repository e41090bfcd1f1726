// The system's side of a file that is to be replaced: where it lies, the staging file that takes the new content, and
// the step from the one to the other. AKFileReplacer.h says what a caller can rely on.
//
// Failures leave the reason in errno.
#pragma once

#include <sys/stat.h>

#include <string>

#include "kit/files/AKDescriptor_p.h"

class AKFileTarget {
 public:
  enum class Kind {
    kMissing,
    kRegular,
    kOther,  // a device or a pipe, or a file that no name leads to any more
  };

  AKFileTarget() = default;
  AKFileTarget(const AKFileTarget&) = delete;
  AKFileTarget& operator=(const AKFileTarget&) = delete;
  /// Deletes what has been staged and not put in place.
  ~AKFileTarget() { Discard(); }

  /// Follows links from the path of a system call. False when the file cannot be told or may not be written.
  bool Find(const std::string& path);
  Kind What() const { return kind_; }

  /// The file whose attributes the new one gets, instead of the target's; without it they are the user's alone.
  void SetModel(const std::string& path);
  /// Creates the staging file with the target's attributes and opens it for reading and writing: a descriptor for the
  /// caller to close, -1 on failure.
  int Stage();
  /// Puts the staged content, which is on the disk, in the target's place.
  bool Put();

 private:
  bool FollowLinks();
  bool GiveAttributes(int descriptor) const;
  int StageBeside();
  int OpenBeside(const std::string& name) const;
  void RemoveAbandoned() const;
  bool WriteInPlace() const;
  void Discard();

  std::string path_;
  Kind kind_ = Kind::kMissing;
  struct stat status_ = {};
  bool hasModel_ = false;
  std::string model_;  // empty for none that exists
  struct stat modelStatus_ = {};
  AKDescriptor folder_;
  std::string name_;  // in the folder
  AKDescriptor staged_;
  std::string stagedName_;  // in the folder; empty for content that has no name
};

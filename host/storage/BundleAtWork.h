// Which bundle's code runs, kept where a crash of the process leaves it.
//
// A plug-in can end the program that loaded it: by a crash, by exit, or by not returning until the user ends it. While
// this lives, a small file in the recovery folder, mapped into memory, names the bundle that starts or whose method
// runs. What a process left that is no longer running tells the next one whom to leave out.
//
// The file: u64 process, u64 its start in ticks since boot, u32 1 while it runs and else 0, u32 0, and the path
// of the bundle as the system spells it, ended by a NUL, in 4,072 bytes.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/model/CallWatch.h"

namespace host {

class BundleAtWork : public CallWatch {
 public:
  /// `beforeFirst` is called before a bundle starts and before the first call of each method of each class: what would
  /// be lost with the process is to be kept then. Without a file, in a folder that can't be written, that is all it
  /// does. One lives at a time.
  explicit BundleAtWork(std::function<void()> beforeFirst);
  ~BundleAtWork() override;

  void Starts(const std::string& path) override;
  void Started() override;
  void Begins(const AKClass& cls, unsigned int slot) override;
  void Ended(const AKClass* outer) override;

  /// The paths of bundles that were at work when their processes ended, each once; they are forgotten with this.
  static std::vector<std::string> TakeLeft();

 private:
  struct Page;
  using Method = std::pair<const AKClass*, unsigned int>;

  void KeepAll();
  void Note(const AKClass* cls);
  void NoteStart();
  void NotePath(const std::string& path);
  const std::string& PathOf(const AKClass& cls);

  std::function<void()> beforeFirst_;
  std::string file_;
  Page* page_ = nullptr;
  const AKClass* noted_ = nullptr;  // whose path is in the page
  std::string starting_;            // a bundle that starts
  std::map<const AKClass*, std::string> paths_;
  std::set<Method> known_;  // what was called
  Method last_{};           // the last of them
  bool keeps_ = false;      // beforeFirst_ runs, and may itself call methods
};

}  // namespace host

// What the host got wrong, and what of it was asked at all, in a file that outlives a crash.
//
// AK_TORTURE_REPORT names the file, or several separated by ":": JSON when its name ends in ".json", text otherwise. It
// is written anew when the bundle starts, behind every moment, and at the end; the call in progress is written into it
// before each call. Each finding is a line of the host's log and of standard error too. docs/torture.md describes both
// forms.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "torture/Entries.h"
#include "torture/Moments.h"
#include "torture/ReportFile.h"

namespace torture {

struct Finding {
  std::string entry;     ///< "class.getClassOfID", or "slot.akmDraw" for what the host called itself
  std::string moment;    ///< in words, "akmDraw within akmInspector, fill"
  std::string done;      ///< what was asked of the entry
  std::string expected;  ///< what the interface promises
  std::string seen;
  std::string section;  ///< of docs/abi.md
  unsigned int times = 1;
};

class Report {
 public:
  /// The bundle's report, begun at the first use.
  static Report& The();

  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  /// Writes the last state.
  ~Report();

  /// A call of an entry begins. What is done is told in the file until it ends.
  void Begin(std::string_view entry, const std::string& done);
  void End();
  /// Found once for each entry, moment and expectation; what comes again is counted.
  void Add(Finding finding);
  /// The host called a method of the bundle's.
  void Reach(MomentID moment) { ++moments_[static_cast<std::size_t>(moment)]; }
  /// A line that went to the host's log, numbered from 1.
  unsigned int NextLogLine() { return ++logLines_; }

  /// Writes the file, if one was asked for.
  void Write();

  std::uint64_t Calls() const { return calls_; }
  std::size_t FindingCount() const { return findings_.size(); }
  std::vector<std::string> EntriesNotReached() const;
  std::vector<std::string> MomentsNotReached() const;
  /// "1204 calls of 84 of 84 entries at 16 of 16 moments, 0 findings"
  std::string Summary() const;

 private:
  Report();

  std::string InProgress() const { return progress_.empty() ? "nothing" : progress_.back(); }
  void WriteProgress();
  void WriteText(ReportFile* file) const;
  void WriteJson(ReportFile* file) const;

  std::vector<ReportFile> files_;
  std::vector<std::string> progress_;  // calls within calls
  std::map<std::string_view, std::uint64_t> entries_;
  std::uint64_t calls_ = 0;
  std::uint64_t moments_[kMomentCount] = {};
  unsigned int logLines_ = 0;
  std::vector<Finding> findings_;
};

}  // namespace torture

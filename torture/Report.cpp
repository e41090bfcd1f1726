#include "torture/Report.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "kit/host/AKHostServices.h"
#include "torture/Lives.h"

namespace torture {
namespace {

constexpr std::size_t kMostFindings = 500;

std::string ListOf(const std::vector<std::string>& names, bool isJson) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + (isJson ? JsonQuoted(name) : name);
  if (isJson) return "[" + list + "]";
  return list.empty() ? "none" : list;
}

std::string Count(std::size_t count, const char* noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

}  // namespace

Report& Report::The() {
  static Report report;
  return report;
}

Report::Report() {
  static_cast<void>(Lives::Count());  // made before the report, and so there when that ends
  const char* const paths = std::getenv("AK_TORTURE_REPORT");
  const std::string all = paths == nullptr ? "" : paths;
  for (std::size_t at = 0; at < all.size();) {
    const std::size_t end = std::min(all.find(':', at), all.size());
    if (end > at) files_.emplace_back(all.substr(at, end - at));
    at = end + 1;
  }
  Write();
}

Report::~Report() {
  Lives::ExpectAllAreGone();
  Write();
  std::fprintf(stderr, "HostTorture: %s\n", Summary().c_str());
}

void Report::Begin(std::string_view entry, const std::string& done) {
  ++calls_;
  ++entries_[entry];
  progress_.push_back(std::string(entry) + " at " + Moment::Where() + ": " + done);
  WriteProgress();
}

void Report::End() {
  progress_.pop_back();
  WriteProgress();
}

void Report::WriteProgress() {
  for (ReportFile& file : files_) file.Progress(InProgress());
}

void Report::Add(Finding finding) {
  for (Finding& known : findings_) {
    if (known.entry != finding.entry || known.moment != finding.moment || known.expected != finding.expected) continue;
    ++known.times;
    return;
  }
  if (findings_.size() == kMostFindings) return;
  const std::string line = "HostTorture: " + finding.entry + " at " + finding.moment + ": " + finding.done +
                           "; expected " + finding.expected + "; seen " + finding.seen;
  findings_.push_back(std::move(finding));
  std::fprintf(stderr, "%s\n", line.c_str());
  Write();
  if (!IsCallable("general.logMessage") || findings_.back().entry == "general.logMessage") return;
  try {
    gAKWrap->logMessage(line.c_str());
  } catch (...) {
    std::fprintf(stderr, "HostTorture: general.logMessage: an exception\n");
  }
}

std::vector<std::string> Report::EntriesNotReached() const {
  std::vector<std::string> names;
  for (const Entry& entry : AllEntries()) {
    if (!entries_.contains(entry.name)) names.emplace_back(entry.name);
  }
  return names;
}

std::vector<std::string> Report::MomentsNotReached() const {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < kMomentCount; ++i) {
    if (moments_[i] == 0) names.emplace_back(NameOf(static_cast<MomentID>(i)));
  }
  return names;
}

std::string Report::Summary() const {
  const std::size_t entries = AllEntries().size();
  return std::to_string(calls_) + " calls of " + std::to_string(entries - EntriesNotReached().size()) + " of " +
         std::to_string(entries) + " entries" + " at " + std::to_string(kMomentCount - MomentsNotReached().size()) +
         " of " + Count(kMomentCount, "moment") + ", " + Count(findings_.size(), "finding");
}

void Report::Write() {
  for (ReportFile& file : files_) file.IsJson() ? WriteJson(&file) : WriteText(&file);
}

void Report::WriteText(ReportFile* file) const {
  std::string text = "\n";
  std::size_t number = 0;
  for (const Finding& finding : findings_) {
    text += "\n" + std::to_string(++number) + ". " + finding.entry + " at " + finding.moment;
    if (finding.times > 1) text += " (" + std::to_string(finding.times) + " times)";
    text += "\n   done      " + finding.done + "\n   expected  " + finding.expected + "\n   seen      " + finding.seen +
            "\n   read      docs/abi.md, \"" + finding.section + "\"\n";
  }
  text += "\nentries not reached: " + ListOf(EntriesNotReached(), false);
  text += "\nmoments not reached: " + ListOf(MomentsNotReached(), false);
  text += "\nnumbered log lines: " + std::to_string(logLines_) + "\n";
  file->Write("HostTorture: " + Summary() + "\nin progress: ", InProgress(), text);
}

void Report::WriteJson(ReportFile* file) const {
  const std::vector<std::string> entries = EntriesNotReached();
  const std::vector<std::string> moments = MomentsNotReached();
  std::string text =
      "\n\"calls\":" + std::to_string(calls_) + ",\"entries\":" + std::to_string(AllEntries().size() - entries.size()) +
      ",\"moments\":" + std::to_string(kMomentCount - moments.size()) + ",\"logLines\":" + std::to_string(logLines_) +
      ",\n\"entriesNotReached\":" + ListOf(entries, true) + ",\n\"momentsNotReached\":" + ListOf(moments, true) +
      ",\n\"list\":[";
  const char* separator = "\n";
  for (const Finding& finding : findings_) {
    text += separator;
    text += "{\"entry\":" + JsonQuoted(finding.entry) + ",\"moment\":" + JsonQuoted(finding.moment) +
            ",\"done\":" + JsonQuoted(finding.done) + ",\"expected\":" + JsonQuoted(finding.expected) +
            ",\"seen\":" + JsonQuoted(finding.seen) + ",\"section\":" + JsonQuoted(finding.section) +
            ",\"times\":" + std::to_string(finding.times) + "}";
    separator = ",\n";
  }
  file->Write("{\"findings\":" + std::to_string(findings_.size()) + ",\"inProgress\":", InProgress(), text + "]}\n");
}

}  // namespace torture

#include "torture/Report.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "kit/host/AKHostServices.h"
#include "torture/Lives.h"

namespace torture {
namespace {

constexpr std::size_t kMostFindings = 500;
constexpr std::size_t kProgressWidth = 400;

void WriteAll(int file, const std::string& text, std::size_t at) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t wrote = pwrite(file, text.data() + done, text.size() - done, static_cast<off_t>(at + done));
    if (wrote <= 0) return;  // the next state may find room again
    done += static_cast<std::size_t>(wrote);
  }
}

// Everything in it is printable ASCII.
std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char byte : text) {
    if (byte == '"' || byte == '\\') quoted += '\\';
    quoted += byte;
  }
  return quoted + '"';
}

std::string ListOf(const std::vector<std::string>& names, bool isJson) {
  std::string list;
  for (const std::string& name : names) list += (list.empty() ? "" : ", ") + (isJson ? Quoted(name) : name);
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
  const char* const path = std::getenv("AK_TORTURE_REPORT");
  if (path == nullptr || path[0] == '\0') return;
  path_ = path;
  isJson_ = path_.ends_with(".json");
  file_ = open(path, O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (file_ < 0) std::fprintf(stderr, "HostTorture: the report \"%s\" can't be written\n", path);
  Write();
}

Report::~Report() {
  Lives::ExpectAllAreGone();
  Write();
  std::fprintf(stderr, "HostTorture: %s\n", Summary().c_str());
  if (file_ >= 0) close(file_);
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

std::string Report::ProgressField() const {
  std::string text = progress_.empty() ? "nothing" : progress_.back();
  text.resize(std::min<std::size_t>(text.size(), kProgressWidth / 2 - 4));  // twice as long where all is escaped
  if (isJson_) text = Quoted(text) + ",";
  text.resize(kProgressWidth, ' ');
  return text;
}

void Report::WriteProgress() const {
  if (file_ >= 0) WriteAll(file_, ProgressField(), progressAt_);
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
         std::to_string(entries) + " entries" + " at " + std::to_string(kMomentCount - MomentsNotReached().size()) + " of " +
         Count(kMomentCount, "moment") + ", " + Count(findings_.size(), "finding");
}

void Report::Write() {
  if (file_ < 0) return;
  const std::string text = isJson_ ? Json(&progressAt_) : Text(&progressAt_);
  WriteAll(file_, text, 0);
  static_cast<void>(ftruncate(file_, static_cast<off_t>(text.size())) + 0);
}

std::string Report::Text(std::size_t* progressAt) const {
  std::string text = "HostTorture: " + Summary() + "\nin progress: ";
  *progressAt = text.size();
  text += ProgressField() + "\n";
  std::size_t number = 0;
  for (const Finding& finding : findings_) {
    text += "\n" + std::to_string(++number) + ". " + finding.entry + " at " + finding.moment;
    if (finding.times > 1) text += " (" + std::to_string(finding.times) + " times)";
    text += "\n   done      " + finding.done + "\n   expected  " + finding.expected + "\n   seen      " + finding.seen +
            "\n   read      docs/abi.md, \"" + finding.section + "\"\n";
  }
  text += "\nentries not reached: " + ListOf(EntriesNotReached(), false);
  text += "\nmoments not reached: " + ListOf(MomentsNotReached(), false);
  return text + "\nnumbered log lines: " + std::to_string(logLines_) + "\n";
}

std::string Report::Json(std::size_t* progressAt) const {
  const std::vector<std::string> entries = EntriesNotReached();
  const std::vector<std::string> moments = MomentsNotReached();
  std::string text = "{\"findings\":" + std::to_string(findings_.size()) + ",\"inProgress\":";
  *progressAt = text.size();
  text += ProgressField() + "\n\"calls\":" + std::to_string(calls_) +
          ",\"entries\":" + std::to_string(AllEntries().size() - entries.size()) +
          ",\"moments\":" + std::to_string(kMomentCount - moments.size()) +
          ",\"logLines\":" + std::to_string(logLines_) + ",\n\"entriesNotReached\":" + ListOf(entries, true) +
          ",\n\"momentsNotReached\":" + ListOf(moments, true) + ",\n\"list\":[";
  const char* separator = "\n";
  for (const Finding& finding : findings_) {
    text += separator;
    text += "{\"entry\":" + Quoted(finding.entry) + ",\"moment\":" + Quoted(finding.moment) +
            ",\"done\":" + Quoted(finding.done) + ",\"expected\":" + Quoted(finding.expected) +
            ",\"seen\":" + Quoted(finding.seen) + ",\"section\":" + Quoted(finding.section) +
            ",\"times\":" + std::to_string(finding.times) + "}";
    separator = ",\n";
  }
  return text + "]}\n";
}

}  // namespace torture

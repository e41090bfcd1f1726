#include "host/torture/Torture.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

#include "host/Program.h"
#include "host/storage/WholeFiles.h"
#include "host/torture/TortureDrive.h"
#include "host/validator/Trial.h"
#include "host/validator/Validation.h"

namespace host {
namespace {

namespace fs = std::filesystem;

constexpr char kBundle[] = "HostTorture.so";
constexpr char kVariable[] = "AK_TORTURE_REPORT";
constexpr char kHuge[] = "AK_TORTURE_HUGE";

// What the check's process is to do.
const TorturePlan* sPlan = nullptr;
std::string sReport;

void Run(validator::Trial& trial) { DriveTorture(trial, *sPlan, sReport); }

constexpr validator::Check kCheck = {"host-torture", "The host keeps what its tables promise.", 1, &Run};

/// A folder for the report, gone with this.
class ReportFolder {
 public:
  ReportFolder() : path_((fs::temp_directory_path() / "objecthost-torture-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) path_.clear();
  }
  ReportFolder(const ReportFolder&) = delete;
  ReportFolder& operator=(const ReportFolder&) = delete;
  ~ReportFolder() {
    std::error_code ignored;
    if (!path_.empty()) fs::remove_all(path_, ignored);
    unsetenv(kVariable);
    unsetenv(kHuge);
  }

  bool IsThere() const { return !path_.empty(); }
  std::string File(const char* name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// The report keeps room behind the call in progress, which it writes over.
void DropBlanksAtLineEnds(std::string* text) {
  std::string kept;
  for (const char c : *text) {
    if (c == '\n') kept.erase(kept.find_last_not_of(' ') + 1);
    kept += c;
  }
  *text = std::move(kept);
}

}  // namespace

unsigned long NumberIn(const std::string& json, const std::string& key) {
  const std::size_t at = json.find("\"" + key + "\":");
  return at == std::string::npos ? 0 : std::strtoul(json.c_str() + at + key.size() + 3, nullptr, 10);
}

bool TortureResult::IsPassed() const {
  return outcome.end == validator::Outcome::End::kPassed && findings == 0 && isComplete;
}

std::string TortureBundle() {
  const fs::path prefix = fs::path(Program::ExecutablePath()).parent_path().parent_path();
  const fs::path built = prefix / "torture" / kBundle;
  std::error_code none;
  return (fs::exists(built, none) ? built : prefix / "lib" / "objecthost" / "torture" / kBundle).string();
}

Result<TortureResult> Torture(const TorturePlan& plan) {
  if (const auto done = validator::CheckFile(plan.bundle); !done) return done.Why();
  const ReportFolder folder;
  if (!folder.IsThere()) return Problem(N_("%s"), {std::string("no temporary folder: ") + std::strerror(errno)});
  const std::string text = folder.File("report.txt");
  const std::string json = folder.File("report.json");
  setenv(kVariable, (text + ":" + json).c_str(), 1);
  if (plan.huge) setenv(kHuge, "1", 1);
  validator::TrialPlan trial;
  trial.bundle = plan.bundle;
  trial.seconds = plan.seconds;
  TortureResult result;
  sPlan = &plan;
  sReport = json;
  result.outcome = validator::RunTrial(kCheck, trial);
  sPlan = nullptr;
  static_cast<void>(ReadWholeFile(text, &result.text).operator bool());
  DropBlanksAtLineEnds(&result.text);
  static_cast<void>(ReadWholeFile(json, &result.json).operator bool());
  result.findings = NumberIn(result.json, "findings");
  result.isComplete = result.json.find("\"entriesNotReached\":[],\n\"momentsNotReached\":[],") != std::string::npos;
  return result;
}

}  // namespace host

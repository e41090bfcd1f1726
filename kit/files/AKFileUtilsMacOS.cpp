#include "kit/files/AKFileUtilsMacOS.h"

#include <climits>
#include <cstdlib>

#include "kit/files/AKFileUtils.h"

namespace {

AKFilePath ExecutablePath() {
  char resolved[PATH_MAX];
  AKFilePath path;
  if (::realpath("/proc/self/exe", resolved) != nullptr) AKFileUtils::GetFromSystemPath(resolved, &path);
  return path;
}

}  // namespace

AKFilePath AKFileUtilsMacOS::GetApplicationBundleResourceFilePath(const AKString& name) {
  const AKFilePath executable = ExecutablePath();
  AKFilePath beside = executable.Folder() / AKFilePath("Resources") / AKFilePath(name);
  if (AKFileUtils::Exists(beside)) return beside;
  const AKFilePath prefix = executable.Folder().Folder();
  const AKFilePath shared = prefix / AKFilePath("share") / AKFilePath(executable.FileName()) / AKFilePath(name);
  return AKFileUtils::Exists(shared) ? shared : beside;
}

#include "kit/files/AKFileUtilsMacOS.h"

#include "kit/files/AKFileUtils.h"
#include "kit/os/AKProgram_p.h"

namespace {

AKFilePath PathOf(const std::string& systemPath) {
  AKFilePath path;
  AKFileUtils::GetFromSystemPath(systemPath.c_str(), &path);
  return path;
}

}  // namespace

AKFilePath AKFileUtilsMacOS::GetApplicationBundleResourceFilePath(const AKString& name) {
  AKFilePath beside = PathOf(AKProgramResources()) / AKFilePath(name);
  if (AKFileUtils::Exists(beside)) return beside;
  const AKFilePath executable = PathOf(AKProgramPath());
  const AKFilePath prefix = executable.Folder().Folder();
  const AKFilePath shared = prefix / AKFilePath("share") / AKFilePath(executable.FileName()) / AKFilePath(name);
  return AKFileUtils::Exists(shared) ? shared : beside;
}

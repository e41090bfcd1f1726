#include "host/bundles/BundleSet.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>

#include "host/bundles/BundleProbe.h"
#include "host/storage/WholeFiles.h"
#include "host/text/Localisation.h"
#include "kit/files/AKFileUtils.h"
#include "kit/files/AKStandardFolders.h"

namespace host {
namespace {

using std::filesystem::path;

std::vector<std::string> Listed(const char* list) {
  std::vector<std::string> folders;
  const std::string text = list == nullptr ? "" : list;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find(':', begin), text.size());
    if (end > begin) folders.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return folders;
}

// A bundle's translations lie in the folder "locale" beside it.
void AddCatalogues(const std::string& bundle) {
  Localisation::Instance().AddFolder((path(bundle).parent_path() / "locale").string());
}

}  // namespace

BundleSet::~BundleSet() {
  while (!loaded_.empty()) loaded_.pop_back();
}

std::vector<std::string> BundleSet::FilesOf(const std::string& folder, std::vector<Skipped>* unreadable) {
  std::error_code error;
  std::vector<std::string> files = host::FilesOf(folder, ".so", &error);
  if (error && unreadable != nullptr) {
    unreadable->push_back(
        {folder, Problem(N_("the plug-in folder \"%s\" can't be read: %s"), {folder, error.message()})});
  }
  return files;
}

Result<> BundleSet::Try(const std::string& file) {
  if (program_.empty() || memory_.HasPassed(file)) return {};
  const std::string state = ProbeMemory::StateOf(file);
  if (const auto done = ProbeBundle(program_, file, kProbeLimit); !done) return done.Why();
  memory_.Remember(file, state);
  return {};
}

Result<> BundleSet::Load(const std::string& file) {
  if (const auto done = Try(file); !done) return done.Why();
  AddCatalogues(file);
  auto bundle = Bundle::Load(file);
  if (!bundle) return bundle.Why();
  loaded_.push_back(std::move(*bundle));
  return {};
}

bool BundleSet::IsLeftOut(const std::string& file) const {
  return std::any_of(leftOut_.begin(), leftOut_.end(), [&file](const std::string& other) {
    std::error_code none;
    return std::filesystem::equivalent(file, other, none);
  });
}

void BundleSet::LoadFound() {
  std::set<std::string> names;
  for (const auto& bundle : loaded_) names.insert(path(bundle->Path()).filename().string());
  for (const std::string& file : Find(&skipped_)) {
    if (names.contains(path(file).filename().string())) continue;
    if (IsLeftOut(file)) {
      skipped_.push_back(
          {file, Problem(N_("\"%s\" was at work when the program ended before its time, and is left out; "
                            "File > Load Bundle uses it again"),
                         {file})});
    } else if (const auto done = Load(file); !done) {
      skipped_.push_back({file, done.Why()});
    }
  }
}

std::vector<std::string> BundleSet::Folders() const {
  std::vector<std::string> folders = Listed(std::getenv("OBJECTHOST_PLUGINS"));
  const AKFilePath data = AKStandardFolderGetPath(AKStandardFolder::kApplicationSupport);
  if (!data.IsEmpty())
    folders.push_back(std::string(AKFileUtils::GetAsSystemPath(data).CStr()) + "/objecthost/plugins");
  std::error_code error;
  const path program = std::filesystem::read_symlink("/proc/self/exe", error);
  for (const char* place : {"plugins", "lib/objecthost/plugins"}) {
    folders.push_back((program.parent_path().parent_path() / place).string());
  }
  return folders;
}

std::vector<std::string> BundleSet::Find(std::vector<Skipped>* unreadable) const {
  std::vector<std::string> files;
  std::set<std::string> names;
  for (const std::string& folder : Folders()) {
    for (const std::string& file : FilesOf(folder, unreadable)) {
      if (names.insert(path(file).filename().string()).second) files.push_back(file);
    }
  }
  return files;
}

}  // namespace host

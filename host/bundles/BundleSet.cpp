#include "host/bundles/BundleSet.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>

#include "host/bundles/BundleProbe.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
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
  std::vector<std::string> files;
  std::error_code error;
  std::filesystem::directory_iterator entry(folder, error);
  for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    if (entry->path().extension() == ".so") files.push_back(entry->path().string());
  }
  if (error && error != std::errc::no_such_file_or_directory && unreadable != nullptr) {
    unreadable->push_back({folder, "the plug-in folder \"" + folder + "\" can't be read: " + error.message()});
  }
  std::sort(files.begin(), files.end());
  return files;
}

bool BundleSet::Try(const std::string& file, std::string* error) {
  if (program_.empty() || memory_.HasPassed(file)) return true;
  const std::string state = ProbeMemory::StateOf(file);
  if (!ProbeBundle(program_, file, kProbeLimit, error)) return false;
  memory_.Remember(file, state);
  return true;
}

bool BundleSet::Load(const std::string& file, std::string* error) {
  if (!Try(file, error)) return false;
  AddCatalogues(file);
  auto bundle = Bundle::Load(file, error);
  if (!bundle) return false;
  loaded_.push_back(std::move(bundle));
  return true;
}

void BundleSet::LoadFound() {
  std::set<std::string> names;
  for (const auto& bundle : loaded_) names.insert(path(bundle->Path()).filename().string());
  for (const std::string& file : Find(&skipped_)) {
    if (names.contains(path(file).filename().string())) continue;
    std::string error;
    if (!Load(file, &error)) skipped_.push_back({file, error});
  }
}

std::vector<std::string> BundleSet::Folders() const {
  std::vector<std::string> folders = Listed(std::getenv("OBJECTHOST_PLUGINS"));
  const AKFilePath data = AKStandardFolderGetPath(AKStandardFolder::kApplicationSupport);
  if (!data.IsEmpty()) folders.push_back(DisplayText(data.Text()) + "/objecthost/plugins");
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

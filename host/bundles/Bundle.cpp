#include "host/bundles/Bundle.h"

#include <dlfcn.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "host/model/InstanceCall.h"

namespace host {
namespace {

using PluginMain = int (*)(void*);

// dlopen looks along its search path for a name without a slash; a bundle is always the file that was named.
std::string FileToOpen(const std::string& path) { return path.find('/') == std::string::npos ? "./" + path : path; }

// A function at an odd address would be taken for a place in a virtual table, and its call end anywhere.
Result<> CheckSlots(const Bundle& bundle) {
  for (const RegisteredClass* entry : bundle.Classes()) {
    for (unsigned int slot = 0; slot < kAKMethodCount; ++slot) {
      if (AKIsCallable(entry->record->methods[slot])) continue;
      return Problem(N_("bundle \"%s\" can't be used: slot %s of its class \"%s\" has a function at an odd address; "
                        "compile it with -falign-functions=16"),
                     {bundle.Path(), std::to_string(slot), entry->id.chars});
    }
  }
  return {};
}

// The watch of calls knows that the bundle's code runs, that of its static objects too, as long as this lives.
class WatchedStart {
 public:
  explicit WatchedStart(const std::string& file) : watch_(InstanceCall::Watch()) {
    std::error_code none;
    if (watch_ != nullptr) watch_->Starts(std::filesystem::absolute(file, none).string());
  }
  WatchedStart(const WatchedStart&) = delete;
  WatchedStart& operator=(const WatchedStart&) = delete;
  ~WatchedStart() {
    if (watch_ != nullptr) watch_->Started();
  }

 private:
  CallWatch* watch_;
};

}  // namespace

Bundle::Bundle(std::string path, void* library)
    : path_(std::move(path)), library_(library), firstClass_(Host::Instance().Classes().Classes().size()) {}

Bundle::~Bundle() {
  Host::Instance().Classes().RemoveAfter(firstClass_);
  dlclose(library_);
}

Result<std::unique_ptr<Bundle>> Bundle::Load(const std::string& path, AKHostServiceRecord services) {
  const std::string file = FileToOpen(path);
  if (access(file.c_str(), R_OK) != 0) {
    return Problem(N_("can't open bundle \"%s\": %s"), {path, std::strerror(errno)});
  }
  const WatchedStart watched(file);
  void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* reason = dlerror();
    return Problem(N_("\"%s\" is no bundle: %s"),
                   {path, reason != nullptr ? Problem::Part(reason) : Problem::Part(N_("it can't be loaded"))});
  }
  // From here on the bundle unloads itself.
  std::unique_ptr<Bundle> bundle(new Bundle(path, library));
  const auto entry = reinterpret_cast<PluginMain>(dlsym(library, "pluginMain"));
  if (entry == nullptr) {
    return Problem(N_("\"%s\" is no bundle: it has no pluginMain"), {path});
  }
  const SessionRegistry::NoCurrent none(Host::Instance().Sessions());
  const int status = entry(&services);
  bundle->classCount_ = Host::Instance().Classes().Classes().size() - bundle->firstClass_;
  if (status != 0) {
    return Problem(N_("bundle \"%s\" refused to start: its pluginMain returned status %s"),
                   {path, std::to_string(status)});
  }
  if (const auto done = CheckSlots(*bundle); !done) return done.Why();
  return bundle;
}

std::vector<const RegisteredClass*> Bundle::Classes() const {
  std::vector<const RegisteredClass*> classes;
  const auto& all = Host::Instance().Classes().Classes();
  for (std::size_t i = 0; i < classCount_; ++i) classes.push_back(&all[firstClass_ + i]);
  return classes;
}

}  // namespace host

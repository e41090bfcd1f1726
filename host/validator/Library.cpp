#include "host/validator/Library.h"

#include <dlfcn.h>
#include <link.h>

#include <filesystem>

#include "host/Host.h"
#include "host/text/Localisation.h"

namespace host::validator {
namespace {

struct CodeSearch {
  ElfW(Addr) address;
  ElfW(Addr) base;
  bool found;
};

// Whether the address lies in an executable part of the library that begins at the base.
int LookForCode(dl_phdr_info* info, std::size_t, void* data) {
  auto* search = static_cast<CodeSearch*>(data);
  if (info->dlpi_addr != search->base) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const ElfW(Phdr)& part = info->dlpi_phdr[i];
    const ElfW(Addr) begin = info->dlpi_addr + part.p_vaddr;
    if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0 && search->address >= begin &&
        search->address < begin + part.p_memsz) {
      search->found = true;
    }
  }
  return 1;
}

// Once: each call takes memory.
void AddCatalogues(const std::string& file) {
  static const bool isDone = [&file] {
    Localisation::Instance().AddFolder((std::filesystem::path(file).parent_path() / "locale").string());
    return true;
  }();
  static_cast<void>(isDone);
}

}  // namespace

// dlopen looks along its search path for a name without a slash.
Library::Library(Trial& trial, const std::string& file)
    : trial_(trial),
      file_(file.find('/') == std::string::npos ? "./" + file : file),
      firstClass_(Host::Instance().Classes().Classes().size()) {
  AddCatalogues(file_);
  trial.Do("load the bundle");
  handle_ = dlopen(file_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) trial.Fail("it is loaded, with everything that it needs", dlerror());
  entry_ = reinterpret_cast<int (*)(void*)>(dlsym(handle_, "pluginMain"));
  if (entry_ == nullptr) trial.Fail("it exports int pluginMain(void*)", "there is no pluginMain");
}

int Library::Start(void* record) const { return entry_(record); }

void Library::Unload() {
  if (handle_ == nullptr) return;
  Host::Instance().Classes().RemoveAfter(firstClass_);
  trial_.Do("unload the bundle");
  dlclose(handle_);
  handle_ = nullptr;
}

bool Library::IsInMemory() const {
  void* const handle = dlopen(file_.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (handle != nullptr) dlclose(handle);
  return handle != nullptr;
}

bool Library::HasCode(const void* address) const {
  const link_map* map = nullptr;
  if (dlinfo(handle_, RTLD_DI_LINKMAP, &map) != 0) return true;
  CodeSearch search{reinterpret_cast<ElfW(Addr)>(address), map->l_addr, false};
  dl_iterate_phdr(&LookForCode, &search);
  return search.found;
}

}  // namespace host::validator

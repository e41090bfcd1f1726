#include "host/storage/BundleAtWork.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <new>

#include "host/model/InstanceCall.h"
#include "host/storage/RecoveryFolder.h"
#include "host/storage/WholeFiles.h"

namespace host {
namespace {

constexpr const char* kExtension = ".atwork";

}  // namespace

struct BundleAtWork::Page {
  std::uint64_t process;
  std::uint64_t start;
  std::uint32_t runs;
  std::uint32_t zero;
  char path[4072];
};

BundleAtWork::BundleAtWork(std::function<void()> beforeFirst) : beforeFirst_(std::move(beforeFirst)) {
  static_assert(sizeof(Page) == 4096);
  InstanceCall::SetWatch(this);
  const std::string folder = RecoveryFolder();
  std::error_code failed;
  std::filesystem::create_directories(folder, failed);
  if (folder.empty() || failed) return;
  const auto process = static_cast<std::uint64_t>(getpid());
  file_ = folder + "/" + std::to_string(process) + kExtension;
  const int file = open(file_.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  // A page that the disk has no room for would end the process when it is written to.
  const bool hasRoom = file >= 0 && posix_fallocate(file, 0, sizeof(Page)) == 0;
  void* const memory = hasRoom ? mmap(nullptr, sizeof(Page), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0) : MAP_FAILED;
  if (file >= 0) close(file);
  if (memory == MAP_FAILED) {
    unlink(file_.c_str());
    return;
  }
  page_ = static_cast<Page*>(memory);
  page_->process = process;
  page_->start = StartOfProcess(process);
}

BundleAtWork::~BundleAtWork() {
  InstanceCall::SetWatch(nullptr);
  if (page_ == nullptr) return;
  munmap(page_, sizeof(Page));
  unlink(file_.c_str());
}

// Classes of the host's own have an address of the program itself, which is no bundle.
const std::string& BundleAtWork::PathOf(const AKClass& cls) {
  const auto found = paths_.find(&cls);
  if (found != paths_.end()) return found->second;
  Dl_info info{};
  const bool known = cls.constructor != nullptr && dladdr(reinterpret_cast<void*>(cls.constructor), &info) != 0;
  const std::string path = known && info.dli_fname != nullptr ? info.dli_fname : "";
  return paths_[&cls] = path.ends_with(".so") && path.size() < sizeof(Page::path) ? path : std::string();
}

void BundleAtWork::Note(const AKClass* cls) {
  if (page_ == nullptr) return;
  page_->runs = 0;
  if (cls == nullptr) return;
  std::atomic_signal_fence(std::memory_order_seq_cst);  // the path never stands there half while it counts
  if (cls != noted_) NotePath(PathOf(*cls));
  noted_ = cls;
  std::atomic_signal_fence(std::memory_order_seq_cst);
  page_->runs = page_->path[0] != '\0';
}

void BundleAtWork::NotePath(const std::string& path) {
  const std::size_t size = path.size() < sizeof(page_->path) ? path.size() : 0;
  std::memcpy(page_->path, path.c_str(), size);
  page_->path[size] = '\0';
}

void BundleAtWork::KeepAll() {
  keeps_ = true;
  try {
    beforeFirst_();
  } catch (const std::bad_alloc&) {
    // Nothing could be kept; that is no reason not to go on.
  }
  keeps_ = false;
}

void BundleAtWork::NoteStart() {
  if (page_ == nullptr) return;
  page_->runs = 0;
  std::atomic_signal_fence(std::memory_order_seq_cst);
  NotePath(starting_);
  noted_ = nullptr;
  std::atomic_signal_fence(std::memory_order_seq_cst);
  page_->runs = 1;
}

void BundleAtWork::Starts(const std::string& path) {
  KeepAll();
  starting_ = path;
  NoteStart();
}

void BundleAtWork::Started() {
  starting_.clear();
  Note(nullptr);
}

// A drawing calls the same method of one class thousands of times.
void BundleAtWork::Begins(const AKClass& cls, unsigned int slot) {
  const Method method{&cls, slot};
  if (!keeps_ && method != last_ && known_.insert(method).second) KeepAll();
  if (!keeps_) last_ = method;
  Note(&cls);
}

void BundleAtWork::Ended(const AKClass* outer) {
  if (outer == nullptr && !starting_.empty()) return NoteStart();
  Note(outer);
}

std::vector<std::string> BundleAtWork::TakeLeft() {
  std::vector<std::string> left;
  std::error_code failed;
  for (const std::string& file : FilesOf(RecoveryFolder(), kExtension, &failed)) {
    std::string bytes;
    Page page{};
    if (!ReadWholeFile(file, &bytes)) continue;
    std::memcpy(&page, bytes.data(), std::min(bytes.size(), sizeof(page)));
    if (page.start != 0 && StartOfProcess(page.process) == page.start) continue;
    page.path[sizeof(page.path) - 1] = '\0';
    const std::string path = page.path;
    if (page.runs != 0 && std::find(left.begin(), left.end(), path) == left.end()) left.push_back(path);
    unlink(file.c_str());
  }
  return left;
}

}  // namespace host

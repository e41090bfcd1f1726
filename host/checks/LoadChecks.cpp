// Loading and unloading, again and again, and what stays behind.
#include <malloc.h>

#include <filesystem>

#include "host/validator/Heap.h"
#include "host/validator/Subject.h"

namespace host::validator {
namespace {

constexpr int kTimes = 100;

void StartAndUse(Trial& trial, Library& library) {
  const std::size_t first = Host::Instance().Classes().Classes().size();
  AKHostServiceRecord record = Host::Instance().ServiceRecord();
  trial.Do("pluginMain after the bundle was unloaded and loaded again");
  const int status = library.Start(&record);
  trial.Expect(status == 0, "status 0", StatusText(status));
  const auto& all = Host::Instance().Classes().Classes();
  for (std::size_t i = first; i < all.size(); ++i) {
    const ClassCalls cls(trial, all[i]);
    cls.Make();
  }
}

void Unloads(Trial& trial) {
  for (int i = 0; i < kTimes; ++i) {
    Library library(trial);
    library.Unload();
    trial.Expect(!library.IsInMemory(), "it leaves the memory", "it is still there");
  }
}

void Reloads(Trial& trial) {
  for (int i = 0; i < kTimes; ++i) {
    Library library(trial);
    StartAndUse(trial, library);
  }
}

void LeavesHeap(Trial& trial) {
  HeapWatch heap(trial);
  for (int i = 0; i < 3 * kTimes; ++i) {
    Library library(trial);
    StartAndUse(trial, library);
    library.Unload();
    heap.Note(i, 3 * kTimes);
  }
  heap.ExpectFlat("loading, starting and unloading");
}

std::size_t CountIn(const char* folder) {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(folder)) ++count;
  return count;
}

// The count in a folder of the system that describes this process stays as it is.
void ExpectNoMore(Trial& trial, const char* folder, const char* what) {
  {
    Library library(trial);  // what the host's own libraries open once is open now
    StartAndUse(trial, library);
  }
  const std::size_t before = CountIn(folder);
  {
    Library library(trial);
    StartAndUse(trial, library);
  }
  const std::size_t after = CountIn(folder);
  trial.Do("start, use and unload the bundle");
  trial.Expect(after <= before, std::to_string(before) + what, std::to_string(after) + what);
}

void LeavesFiles(Trial& trial) { ExpectNoMore(trial, "/proc/self/fd", " open files"); }

void LeavesThreads(Trial& trial) {
  const std::size_t before = CountIn("/proc/self/task");
  Subject subject(trial);
  for (const ClassCalls& cls : subject.Classes()) StateOf(cls, cls.Make());
  const std::size_t after = CountIn("/proc/self/task");
  trial.Do("start and use the bundle");
  trial.Expect(after <= before, std::to_string(before) + " threads", std::to_string(after) + " threads");
}

}  // namespace

std::vector<Check> LoadChecks() {
  return {
      {"load-unloads", "The bundle leaves the memory when it is unloaded, 100 times, so that it can be replaced.", 2,
       &Unloads},
      {"load-reloads", "The bundle starts again each time that it is loaded, since a host may unload and load it.", 2,
       &Reloads},
      {"load-heap", "Loading, starting and unloading leaves no memory taken, or a long session runs out of it.", 3,
       &LeavesHeap},
      {"load-files", "The bundle leaves no files open, since a process may have only so many.", 3, &LeavesFiles},
      {"load-threads", "The bundle has no threads of its own: everything in a host happens on one.", 3, &LeavesThreads},
  };
}

}  // namespace host::validator

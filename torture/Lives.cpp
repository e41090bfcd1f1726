#include "torture/Lives.h"

#include <pthread.h>

#include <map>
#include <set>

#include "torture/Call.h"
#include "torture/Report.h"

namespace torture {
namespace {

enum class Stage { kMade, kUsed, kEnded };

struct World {
  std::map<const AKObject*, Stage> stages;
  std::set<const AKObject*> leaving;
  pthread_t thread = pthread_self();
};

World& TheWorld() {
  static World world;
  return world;
}

void Judge(std::string_view slot, const char* done, bool holds, const char* expected, const char* seen) {
  const Call call(slot, done, kInstanceSection);
  call.Expect(holds, expected, seen);
}

Stage* StageOf(const AKObject* object, std::string_view slot) {
  Judge(slot, "the host calls it", pthread_equal(TheWorld().thread, pthread_self()) != 0,
        "a call on the thread that pluginMain was called on", "another thread");
  const auto found = TheWorld().stages.find(object);
  const bool isKnown = found != TheWorld().stages.end();
  Judge(slot, "the host calls it", isKnown, "an instance that its class's constructor made and that is not destroyed",
        "another address");
  return isKnown ? &found->second : nullptr;
}

}  // namespace

void Lives::Made(const AKObject* object) { TheWorld().stages[object] = Stage::kMade; }

void Lives::Initialises(const AKObject* object, std::string_view slot) {
  Stage* const stage = StageOf(object, slot);
  if (stage == nullptr) return;
  Judge(slot, "the host initialises an instance", *stage != Stage::kEnded,
        "nothing but the destructor behind akmDelete", "it was ended before");
  if (*stage == Stage::kMade) *stage = Stage::kUsed;
}

void Lives::Uses(const AKObject* object, std::string_view slot) {
  const Stage* const stage = StageOf(object, slot);
  if (stage == nullptr) return;
  Judge(slot, "the host calls it", *stage != Stage::kMade, "one of the init slots before any other method",
        "an instance behind its constructor");
  Judge(slot, "the host calls it", *stage != Stage::kEnded, "nothing but the destructor behind akmDelete",
        "an instance that was ended");
}

void Lives::Ends(const AKObject* object) {
  Stage* const stage = StageOf(object, "slot.akmDelete");
  if (stage == nullptr) return;
  Judge("slot.akmDelete", "the host ends an instance", *stage != Stage::kEnded, "one akmDelete for each instance",
        "a second one");
  *stage = Stage::kEnded;
}

void Lives::Destroyed(const AKObject* object) {
  const Stage* const stage = StageOf(object, "slot.destructor");
  if (stage == nullptr) return;
  Judge("slot.destructor", "the host destroys an instance", *stage == Stage::kEnded, "akmDelete before the destructor",
        "no akmDelete");
  TheWorld().stages.erase(object);
  TheWorld().leaving.erase(object);
}

bool Lives::IsAlive(const AKObject* object) { return TheWorld().stages.contains(object); }

bool Lives::IsInitialised(const AKObject* object) {
  const auto found = TheWorld().stages.find(object);
  return found != TheWorld().stages.end() && found->second == Stage::kUsed;
}

std::size_t Lives::Count() { return TheWorld().stages.size(); }

void Lives::ExpectToLeave(const AKObject* object) { TheWorld().leaving.insert(object); }

void Lives::ExpectLeftAreGone() {
  if (TheWorld().leaving.empty()) return;
  TheWorld().leaving.clear();
  Judge("handler.deleteObjects", "look at the objects that were deleted when the outermost method has returned", false,
        "they were ended", "some live on");
}

void Lives::ExpectAllAreGone() {
  const std::size_t count = Count();
  const Call call("slot.destructor", "the bundle is unloaded", kInstanceSection);
  call.Expect(count == 0, "all instances ended before", std::to_string(count) + " still there");
}

}  // namespace torture

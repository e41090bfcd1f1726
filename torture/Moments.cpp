#include "torture/Moments.h"

#include <cstdlib>

#include "torture/Lives.h"
#include "torture/Report.h"

namespace torture {
namespace {

constexpr std::string_view kNames[kMomentCount] = {"pluginMain",
                                                   "the constructor",
                                                   "akmInitWithArgs",
                                                   "akmInitFromFile",
                                                   "akmWriteToFile",
                                                   "akmGetObjectProperties",
                                                   "akmSetObjectProperties of a new object",
                                                   "akmSetObjectProperties",
                                                   "akmGetNaturalBounds",
                                                   "akmDraw",
                                                   "akmInspector, fill",
                                                   "akmInspector, idle",
                                                   "akmInspector, a change",
                                                   "the procedure of a dialog",
                                                   "akmDelete",
                                                   "the destructor"};

const Moment* sInnermost = nullptr;
int sRounds[kMomentCount] = {};

bool IsChanging(MomentID id) {
  switch (id) {
    case MomentID::kSetProperties:
    case MomentID::kFill:
    case MomentID::kIdle:
    case MomentID::kChange:
    case MomentID::kDialog:
      return true;
    default:
      return false;
  }
}

// How often each moment asks everything.
int MostRounds() {
  static const int most = [] {
    const char* text = std::getenv("AK_TORTURE_ROUNDS");
    const int number = text != nullptr ? std::atoi(text) : 2;
    return number > 0 ? number : 2;
  }();
  return most;
}

}  // namespace

std::string_view NameOf(MomentID moment) { return kNames[static_cast<std::size_t>(moment)]; }

Moment::Moment(MomentID id, const AKObject* object) : id_(id), object_(object), outer_(sInnermost) {
  // They go one after the other, and this may be one of them.
  const bool isEnding = id == MomentID::kDelete || id == MomentID::kDestructor;
  if (outer_ == nullptr && !isEnding) Lives::ExpectLeftAreGone();
  sInnermost = this;
  Report::The().Reach(id);
}

Moment::~Moment() {
  sInnermost = outer_;
  if (outer_ == nullptr) Report::The().Write();
}

const Moment* Moment::Current() { return sInnermost; }

unsigned int Moment::Depth() {
  unsigned int depth = 0;
  for (const Moment* moment = sInnermost; moment != nullptr; moment = moment->outer_) ++depth;
  return depth;
}

std::string Moment::Where() {
  std::string where;
  for (const Moment* moment = sInnermost; moment != nullptr; moment = moment->outer_) {
    where += (where.empty() ? "" : " within ") + std::string(NameOf(moment->id_));
  }
  return where.empty() ? "no method" : where;
}

bool Moment::MayEdit() {
  for (const Moment* moment = sInnermost; moment != nullptr; moment = moment->outer_) {
    if (!IsChanging(moment->id_)) return false;
  }
  return sInnermost != nullptr;
}

bool Moment::TakesRound() const {
  for (const Moment* moment = outer_; moment != nullptr; moment = moment->outer_) {
    if (moment->id_ == id_) return false;
  }
  return Depth() <= 3 && sRounds[static_cast<std::size_t>(id_)]++ < MostRounds();
}

}  // namespace torture

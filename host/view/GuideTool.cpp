#include "host/view/GuideTool.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "host/text/Localisation.h"

namespace host {
namespace {

constexpr double kReach = 4;      // pixels of the view
constexpr double kSnapReach = 6;  // pixels of the view

double Along(int axis, const AGPoint& point) { return axis == 0 ? point.x : point.y; }

}  // namespace

void GuideTool::SetSession(DocumentSession* session) {
  Cancel();
  chosen_.reset();
  session_ = session;
}

std::optional<Guide> GuideTool::GuideAt(const AGPoint& point) const {
  if (session_ == nullptr) return std::nullopt;
  std::optional<Guide> nearest;
  double best = kReach / view_->Zoom();
  const AGPoint map = view_->ToMap(point);
  for (int axis = 0; axis < 2; ++axis) {
    for (const double place : session_->Doc().Aids().Guides(axis)) {
      const double distance = std::fabs(place - Along(axis, map));
      if (distance > best) continue;
      best = distance;
      nearest = Guide{axis, place};
    }
  }
  return nearest;
}

void GuideTool::Press(const Guide& guide) {
  PressOnRuler(guide.axis);
  origin_ = dragged_ = guide;
}

void GuideTool::PressOnRuler(int axis) {
  Cancel();
  isPressed_ = session_ != nullptr;
  moved_ = false;
  targets_.reset();
  axis_ = axis;
}

void GuideTool::Motion(const AGPoint& point, const AGSize& size, bool isFree) {
  if (!isPressed_) return;
  const AGPoint map = view_->ToMap(point);
  const double reach = kSnapReach / view_->Zoom();
  moved_ = moved_ || !origin_ || std::fabs(Along(axis_, map) - origin_->place) * view_->Zoom() > kReach;
  if (!moved_) return;
  dragged_.reset();
  if (Along(axis_, point) < 0) return;  // on the ruler
  double place = Along(axis_, map);
  if (!targets_ && snap_.objects) {
    SnapRules others = snap_;
    others.guides = false;
    targets_ = SnapTargets(*session_, view_->Shown(size), others);
  }
  const auto fit = isFree || !targets_ ? std::nullopt : targets_->FitEdge(axis_, place, reach);
  if (fit) {
    place += *fit;
  } else if (snap_.spacing > 0 && !isFree) {
    place = std::floor(place / snap_.spacing + 0.5) * snap_.spacing;
  }
  dragged_ = Guide{axis_, place};
}

Result<> GuideTool::Release() {
  if (!isPressed_) return {};
  isPressed_ = false;
  const auto origin = std::exchange(origin_, std::nullopt);
  const auto dragged = std::exchange(dragged_, std::nullopt);
  chosen_ = dragged;
  return moved_ ? Replace(origin, dragged) : Result<>();
}

bool GuideTool::Cancel() {
  const bool wasPressed = std::exchange(isPressed_, false);
  origin_.reset();
  dragged_.reset();
  return wasPressed;
}

// Undoing may have taken it away.
std::optional<Guide> GuideTool::Chosen() const {
  if (!chosen_ || session_ == nullptr) return std::nullopt;
  const std::vector<double>& guides = session_->Doc().Aids().Guides(chosen_->axis);
  return std::ranges::find(guides, chosen_->place) == guides.end() ? std::nullopt : chosen_;
}

bool GuideTool::DeleteChosen() {
  const auto chosen = Chosen();
  chosen_.reset();
  return chosen && Replace(chosen, std::nullopt);
}

Result<> GuideTool::Add(const Guide& guide) {
  auto done = Replace(std::nullopt, guide);
  if (done) chosen_ = guide;
  return done;
}

bool GuideTool::ChooseNext(bool backwards) {
  std::vector<Guide> all;
  for (int axis = 0; axis < 2 && session_ != nullptr; ++axis) {
    std::vector<double> places = session_->Doc().Aids().Guides(axis);
    std::ranges::sort(places);
    places.erase(std::unique(places.begin(), places.end()), places.end());
    for (const double place : places) all.push_back({axis, place});
  }
  if (all.empty()) return false;
  const auto chosen = Chosen();
  const std::size_t count = all.size();
  std::size_t at = backwards ? 0 : count - 1;
  if (chosen) at = static_cast<std::size_t>(std::ranges::find(all, *chosen) - all.begin());
  chosen_ = all[(at + (backwards ? count - 1 : 1)) % count];
  return true;
}

Result<> GuideTool::MoveChosen(double place) {
  const auto chosen = Chosen();
  if (!chosen) return {};
  const Guide moved{chosen->axis, place};
  auto done = Replace(chosen, moved);
  if (done) chosen_ = moved;
  return done;
}

Result<> GuideTool::Replace(const std::optional<Guide>& old, const std::optional<Guide>& by) {
  PageAids aids = session_->Doc().Aids();
  if (old) {
    std::vector<double>& guides = aids.Guides(old->axis);
    const auto found = std::ranges::find(guides, old->place);
    if (found != guides.end()) guides.erase(found);
  }
  if (by) aids.Guides(by->axis).push_back(by->place);
  if (aids == session_->Doc().Aids()) return {};
  return session_->SetAids(std::move(aids), !old ? Tr("Add Guide") : by ? Tr("Move Guide") : Tr("Remove Guide"));
}

}  // namespace host

// Guides under the pointer: drawn out of a ruler, moved, chosen, and taken away. Guides by the keyboard: made, chosen
// one after the other, and moved.
//
// As PointerTool it translates what the pointer does in pixels of the view into edits of a session, a step each, and
// knows no toolkit. The document changes at the release.
#pragma once

#include <optional>

#include "host/view/SnapTargets.h"
#include "host/view/ViewTransform.h"

namespace host {

/// A line across the page: of axis 0 one that stands at an x, of axis 1 one that lies at a y. Map units.
struct Guide {
  int axis = 0;
  double place = 0;

  bool operator==(const Guide&) const = default;
};

class GuideTool {
 public:
  explicit GuideTool(const ViewTransform* view) : view_(view) {}

  /// The session may be null. A drag is given up.
  void SetSession(DocumentSession* session);
  void SetSnap(const SnapRules& snap) { snap_ = snap; }

  /// The guide within a few pixels of a point of the view.
  std::optional<Guide> GuideAt(const AGPoint& point) const;
  /// A press on a guide, and on the ruler out of which one of an axis is to come.
  void Press(const Guide& guide);
  void PressOnRuler(int axis);
  /// `size` is the view's; `isFree` lets go of all that guides snap to.
  void Motion(const AGPoint& point, const AGSize& size, bool isFree);
  /// Puts the guide where it is; one that came back to a ruler is gone. A click chooses the guide.
  Result<> Release();
  /// False when nothing was going on.
  bool Cancel();
  bool IsActive() const { return isPressed_; }

  /// The one that is dragged, as it lies now; none when it would go.
  const std::optional<Guide>& Dragged() const { return dragged_; }
  /// That it was, which does not show meanwhile.
  const std::optional<Guide>& Origin() const { return origin_; }
  /// The guide that was clicked, made or moved last, as long as it is there.
  std::optional<Guide> Chosen() const;
  void ChooseNone() { chosen_.reset(); }
  /// Takes away the chosen guide. False when there is none.
  bool DeleteChosen();
  /// Makes a guide, and chooses it.
  Result<> Add(const Guide& guide);
  /// Chooses the next guide, or the one before: those that stand from the left, then those that lie from below. The
  /// first or the last one when none is chosen; false without guides.
  bool ChooseNext(bool backwards);
  /// Puts the chosen guide elsewhere; nothing happens when there is none.
  Result<> MoveChosen(double place);

 private:
  Result<> Replace(const std::optional<Guide>& old, const std::optional<Guide>& by);

  DocumentSession* session_ = nullptr;
  const ViewTransform* view_;
  SnapRules snap_;
  bool isPressed_ = false;
  bool moved_ = false;
  int axis_ = 0;
  std::optional<Guide> origin_;
  std::optional<Guide> dragged_;
  std::optional<Guide> chosen_;
  std::optional<SnapTargets> targets_;  ///< of the drag, once it moves
};

}  // namespace host

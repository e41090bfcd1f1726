// What the canvas shows while a drag shows the selected objects shifted: their own picture, drawn once, over one of all
// else. They are in front of everything meanwhile, and lie on whole pixels.
//
// Both pictures are tiles of a TileCache each, on the grid of the canvas's own, which show what there was before until
// a tile is drawn. When the shift ends, the pictures stay over those tiles of the document that are not up to date yet:
// nothing is seen to jump back.
#pragma once

#include "host/session/DocumentSession.h"
#include "host/view/TileCache.h"

namespace host {

class ShiftedSelection {
 public:
  /// To be called when the session's shift is new.
  void Follow(const DocumentSession& session);
  void SetGrid(const TileCache::Grid& grid) { beneath_.SetGrid(grid); }
  void Invalidate(const AGRect& area);
  void Drop();

  /// True from the first shift until Drop.
  bool IsShown() const { return shown_; }
  /// False from the end of the shift on: then the document's tiles are to be drawn.
  bool IsMoving() const { return moving_; }

  /// Draws until the time is up. False when something is left to draw.
  bool DrawWithin(std::chrono::microseconds budget, const ViewTransform& view, const AGSize& size);
  /// The tile to show in place of one of the document; null when that is to be seen itself: it is up to date, or there
  /// is no other yet.
  const TileCache::Tile* Beneath(const TileCache::Tile& tile);
  /// True where the selection's picture lies over a tile of the document.
  bool Covers(const TileCache::Tile& tile) const { return shown_ && (moving_ || !tile.IsUpToDate()); }
  /// The tiles of the selection that a view shows, and the view that they are to be placed in.
  std::vector<TileCache::Tile*> Above(const ViewTransform& view, const AGSize& size) {
    return above_.Look(ShiftedView(view), size);
  }
  ViewTransform ShiftedView(const ViewTransform& view) const;

 private:
  void Begin(const DocumentSession& session);

  bool shown_ = false;
  bool moving_ = false;
  AGPoint shift_;
  TileCache beneath_{nullptr};
  TileCache above_{nullptr};
};

}  // namespace host

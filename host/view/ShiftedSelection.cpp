#include "host/view/ShiftedSelection.h"

#include <algorithm>
#include <cmath>

namespace host {

void ShiftedSelection::Follow(const DocumentSession& session) {
  const std::optional<AGPoint>& shift = session.Selection().Shift();
  if (shift && !moving_) Begin(session);
  if (shift) shift_ = *shift;
  moving_ = shift.has_value();
}

// Placeholders are not moved: they belong to the rest.
void ShiftedSelection::Begin(const DocumentSession& session) {
  auto ids = std::make_shared<ObjectIDs>(session.Selection().IDs());
  std::sort(ids->begin(), ids->end());
  const auto moves = [ids](const DocumentObject& object) {
    return !object.IsPlaceholder() && std::binary_search(ids->begin(), ids->end(), object.id);
  };
  beneath_.SetDocument(&session.Doc());
  above_.SetDocument(&session.Doc());
  beneath_.SetContent([moves](const DocumentObject& object) { return !moves(object); }, true);
  above_.SetContent(moves, false);
  shown_ = true;
}

void ShiftedSelection::Drop() {
  shown_ = moving_ = false;
  for (TileCache* tiles : {&beneath_, &above_}) {
    tiles->SetContent(nullptr, true);
    tiles->SetDocument(nullptr);
  }
}

void ShiftedSelection::Invalidate(const AGRect& area) {
  if (!moving_) return;
  beneath_.Invalidate(area);
  above_.Invalidate(area);
}

ViewTransform ShiftedSelection::ShiftedView(const ViewTransform& view) const {
  ViewTransform shifted(view);
  shifted.SetOffset(view.OffsetX() - std::llround(shift_.x * view.PixelsPerUnit()),
                    view.OffsetY() + std::llround(shift_.y * view.PixelsPerUnit()));
  return shifted;
}

// Place by place, so that what is lifted off a place is seen to be gone from it as soon as it is seen elsewhere.
bool ShiftedSelection::DrawWithin(std::chrono::microseconds budget, const ViewTransform& view, const AGSize& size) {
  const auto end = std::chrono::steady_clock::now() + budget;
  bool first = true;
  const auto draw = [&](TileCache* tiles, TileCache::Tile* tile) {
    if (tile == nullptr || tile->IsUpToDate()) return true;
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - std::chrono::steady_clock::now());
    if (!first && left.count() <= 0) return false;
    first = false;
    return tiles->DrawWithin(left, {tile});
  };
  const auto above = Above(view, size);
  for (TileCache::Tile* tile : beneath_.Look(view, size)) {
    if (!draw(&above_, above_.Find(tile->column, tile->row)) || !draw(&beneath_, tile)) return false;
  }
  return std::all_of(above.begin(), above.end(), [&](TileCache::Tile* tile) { return draw(&above_, tile); });
}

const TileCache::Tile* ShiftedSelection::Beneath(const TileCache::Tile& tile) {
  if (!Covers(tile)) return nullptr;
  const TileCache::Tile* above = above_.Find(tile.column, tile.row);
  const TileCache::Tile* beneath = beneath_.Find(tile.column, tile.row);
  const bool lifted = above == nullptr || above->drawn;
  return lifted && beneath != nullptr && beneath->drawn ? beneath : nullptr;
}

}  // namespace host

#include "host/view/TileCache.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "CoreGraphics/CGContext.h"
#include "graphics/native/AGGraphicsLow.h"

namespace host {
namespace {

// Lines of the grid lie no nearer to each other than this many device pixels.
constexpr double kLeastGap = 8;

// Of a band: about the objects that it has, and the device pixels that it is high at least.
constexpr double kBandObjects = 1000;
constexpr double kLeastBand = 8;

bool Overlap(const AGRect& a, const AGRect& b) { return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1; }

AGRect Common(const AGRect& a, const AGRect& b) {
  return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

AGRect Both(const AGRect& a, const AGRect& b) {
  return {std::min(a.x0, b.x0), std::min(a.y0, b.y0), std::max(a.x1, b.x1), std::max(a.y1, b.y1)};
}

// Grown to whole device pixels, since those are what is cleared and drawn.
AGRect WholePixels(const AGRect& area, double scale) {
  return {std::floor(area.x0 * scale) / scale, std::floor(area.y0 * scale) / scale, std::ceil(area.x1 * scale) / scale,
          std::ceil(area.y1 * scale) / scale};
}

int TileOf(std::int64_t pixel) {
  return static_cast<int>(pixel >= 0 ? pixel / TileCache::kSide : -((TileCache::kSide - 1 - pixel) / TileCache::kSide));
}

}  // namespace

void TileCache::SetDocument(const Document* document) {
  document_ = document;
  former_.clear();
  InvalidateAll();
}

void TileCache::SetGrid(const Grid& grid) {
  grid_ = grid;
  InvalidateAll();
}

void TileCache::SetContent(DrawnObjects drawn, bool withPage) {
  drawnObjects_ = std::move(drawn);
  withPage_ = withPage;
  tiles_.clear();
  former_.clear();
}

void TileCache::SetPixelsPerUnit(double pixelsPerUnit) {
  if (pixelsPerUnit == pixelsPerUnit_) return;
  // While a zoom goes on the tiles that were last complete stay the ones to be stretched.
  const bool complete = std::any_of(tiles_.begin(), tiles_.end(), [](const auto& entry) { return entry.second.drawn; });
  if (former_.empty() && complete) {
    former_ = std::move(tiles_);
    formerPixelsPerUnit_ = pixelsPerUnit_;
  }
  tiles_.clear();
  pixelsPerUnit_ = pixelsPerUnit;
}

AGRect TileCache::AreaOf(const Tile& tile) const {
  const double side = kSide / pixelsPerUnit_;
  return {tile.column * side, -(tile.row + 1) * side, (tile.column + 1) * side, -tile.row * side};
}

void TileCache::Invalidate(const AGRect& area) {
  for (auto& [place, tile] : tiles_) {
    if (!Overlap(AreaOf(tile), area)) continue;
    const AGRect part = Common(AreaOf(tile), area);
    tile.dirty = tile.dirty.x1 > tile.dirty.x0 ? Both(tile.dirty, part) : part;
  }
}

void TileCache::InvalidateAll() {
  for (auto& [place, tile] : tiles_) tile.dirty = AreaOf(tile);
}

std::vector<TileCache::Tile*> TileCache::Look(const ViewTransform& view, const AGSize& size) {
  SetPixelsPerUnit(view.PixelsPerUnit());
  ++look_;
  const auto width = static_cast<std::int64_t>(std::ceil(size.width * view.DeviceScale()));
  const auto height = static_cast<std::int64_t>(std::ceil(size.height * view.DeviceScale()));
  std::vector<Tile*> seen;
  for (int row = TileOf(view.OffsetY()); row <= TileOf(view.OffsetY() + height - 1); ++row) {
    for (int column = TileOf(view.OffsetX()); column <= TileOf(view.OffsetX() + width - 1); ++column) {
      const auto [entry, isNew] = tiles_.try_emplace({column, row});
      Tile& tile = entry->second;
      tile.column = column;
      tile.row = row;
      if (isNew) tile.dirty = AreaOf(tile);
      tile.lastLooked = look_;
      seen.push_back(&tile);
    }
  }
  const double middleX = (static_cast<double>(view.OffsetX()) + static_cast<double>(width) / 2) / kSide - 0.5;
  const double middleY = (static_cast<double>(view.OffsetY()) + static_cast<double>(height) / 2) / kSide - 0.5;
  std::stable_sort(seen.begin(), seen.end(), [=](const Tile* a, const Tile* b) {
    return std::hypot(a->column - middleX, a->row - middleY) < std::hypot(b->column - middleX, b->row - middleY);
  });
  DropUnseen();
  return seen;
}

void TileCache::DropUnseen() {
  if (tiles_.size() <= kMostTiles) return;
  std::erase_if(tiles_, [this](const auto& entry) { return entry.second.lastLooked != look_; });
}

TileCache::Tile* TileCache::Find(int column, int row) {
  const auto found = tiles_.find({column, row});
  return found == tiles_.end() ? nullptr : &found->second;
}

void TileCache::Draw(Tile* tile) {
  while (document_ != nullptr && !tile->IsUpToDate()) DrawBand(tile);
}

// The upper part of an area, as much of it as has about kBandObjects.
AGRect TileCache::TopBand(const AGRect& area) const {
  const auto count = static_cast<double>(CountObjects(*document_, area));
  if (count <= kBandObjects) return area;
  const double top = area.y1 * pixelsPerUnit_;
  const double rows = top - area.y0 * pixelsPerUnit_;
  const double height = std::max(std::ceil(rows * kBandObjects / count), kLeastBand);
  return {area.x0, std::max(area.y0, std::round(top - height) / pixelsPerUnit_), area.x1, area.y1};
}

void TileCache::DrawBand(Tile* tile) {
  if (tile->bitmap == nullptr) {
    tile->bitmap = std::make_unique<AGBitmap>(static_cast<unsigned int>(kSide), static_cast<unsigned int>(kSide),
                                              AGBitmap::kFlagLittleEndian | AGBitmap::kFlagZeroFill);
  }
  const AGRect area = Common(WholePixels(tile->dirty, pixelsPerUnit_), AreaOf(*tile));
  const AGRect band = TopBand(area);
  DrawArea(tile, band);
  const bool isLast = !(band.y0 > area.y0);
  tile->dirty = isLast ? AGRect{0, 0, 0, 0} : AGRect{area.x0, area.y0, area.x1, band.y0};
  tile->drawn = tile->drawn || isLast;
  tile->version = ++versions_;
}

bool TileCache::DrawWithin(std::chrono::microseconds budget, const std::vector<Tile*>& tiles) {
  const auto end = std::chrono::steady_clock::now() + budget;
  bool first = true;
  for (Tile* tile : tiles) {
    while (document_ != nullptr && !tile->IsUpToDate()) {
      if (!first && std::chrono::steady_clock::now() >= end) return false;
      DrawBand(tile);
      first = false;
    }
  }
  return true;
}

void TileCache::DrawArea(Tile* tile, const AGRect& area) const {
  const AGContext context = tile->bitmap->GetContextOfBitmap();
  CGContextRef port = context.NativePort();
  if (port == nullptr) return;
  CGContextSaveGState(port);
  // Map (0, 0) is device pixel (0, 0); the tile's own pixels have y up from its lower edge.
  const double left = static_cast<double>(tile->column) * kSide;
  const double bottom = static_cast<double>(tile->row + 1) * kSide;
  CGContextConcatCTM(port, {1, 0, 0, 1, -left, bottom});
  const double scale = pixelsPerUnit_;
  const CGRect pixels =
      CGRectMake(area.x0 * scale, area.y0 * scale, (area.x1 - area.x0) * scale, (area.y1 - area.y0) * scale);
  CGContextSetShouldAntialias(port, false);
  CGContextBeginPath(port);
  CGMutablePathRef clip = CGPathCreateMutable();
  CGPathAddRect(clip, nullptr, pixels);
  CGContextAddPath(port, clip);
  CGPathRelease(clip);
  CGContextClip(port);
  CGContextClearRect(port, pixels);
  if (withPage_) {
    DrawPage(context);
    DrawGrid(context, area);
  }
  CGContextSetShouldAntialias(port, true);
  DrawObjects(*document_, context, scale, area, drawnObjects_);
  CGContextRestoreGState(port);
}

void TileCache::DrawPage(const AGContext& context) const {
  CGContextRef port = context.NativePort();
  const AGColor paper = document_->Background();
  CGContextSetRGBFillColor(port, paper.Red() / 255.0, paper.Green() / 255.0, paper.Blue() / 255.0, 1);
  CGContextFillRect(port, CGRectMake(0, 0, std::floor(document_->Page().width * pixelsPerUnit_ + 0.5),
                                     std::floor(document_->Page().height * pixelsPerUnit_ + 0.5)));
}

void TileCache::DrawGrid(const AGContext& context, const AGRect& area) const {
  if (!(grid_.spacing > 0)) return;
  double spacing = grid_.spacing;
  while (spacing * pixelsPerUnit_ < kLeastGap) spacing *= 5;
  const AGSize page = document_->Page();
  const AGRect part = Common(area, {0, 0, page.width, page.height});
  CGContextRef port = context.NativePort();
  CGContextSetRGBFillColor(port, 0.35, 0.55, 0.85, 0.35);
  // Lines are filled as rectangles of one device pixel: crisp at every scale.
  for (double x = std::ceil(part.x0 / spacing) * spacing; x < part.x1; x += spacing) {
    CGContextFillRect(port, CGRectMake(std::floor(x * pixelsPerUnit_), part.y0 * pixelsPerUnit_, 1,
                                       (part.y1 - part.y0) * pixelsPerUnit_));
  }
  for (double y = std::ceil(part.y0 / spacing) * spacing; y < part.y1; y += spacing) {
    CGContextFillRect(port, CGRectMake(part.x0 * pixelsPerUnit_, std::floor(y * pixelsPerUnit_),
                                       (part.x1 - part.x0) * pixelsPerUnit_, 1));
  }
}

}  // namespace host

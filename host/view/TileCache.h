// The drawn document in tiles: squares of device pixels, drawn when they are first looked at and again where something
// changed.
//
// A part with many objects is drawn in bands, between which whoever draws can stop: no frame waits for thousands of
// them.
//
// Tiles lie on a grid that is fixed to the map at one zoom, so scrolling draws only what comes into sight, and a change
// draws only the changed part of the tiles that it touches. When the zoom changes the tiles of the last zoom are kept
// to be shown stretched until the new ones are drawn. Pixels are blue, green, red, alpha, premultiplied, the upper row
// first; beside the page they are clear.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "host/model/Document.h"
#include "host/pictures/DocumentDrawing.h"
#include "host/view/ViewTransform.h"

namespace host {

class TileCache {
 public:
  static constexpr int kSide = 256;
  /// Tiles out of sight are dropped beyond this count.
  static constexpr std::size_t kMostTiles = 400;

  struct Tile {
    int column = 0;  ///< it covers the device pixels from column * kSide and row * kSide on
    int row = 0;
    std::unique_ptr<AGBitmap> bitmap;
    AGRect dirty{0, 0, 0, 0};   ///< in map units, to be drawn; all of it at first
    bool drawn = false;         ///< false until all of it was drawn once
    std::uint64_t version = 0;  ///< changes with the pixels
    std::uint64_t lastLooked = 0;
    bool IsUpToDate() const { return drawn && !(dirty.x1 > dirty.x0); }
  };

  struct Grid {
    double spacing = 0;  ///< map units between lines; 0 draws none
  };

  explicit TileCache(const Document* document) : document_(document) {}

  /// Another document, or none: everything is drawn anew.
  void SetDocument(const Document* document);
  void SetGrid(const Grid& grid);
  /// Shows a part of the objects, with or without the page beneath them: everything is drawn anew.
  void SetContent(DrawnObjects drawn, bool withPage);
  /// The zoom of the tiles; a new one sets the tiles there are aside.
  void SetPixelsPerUnit(double pixelsPerUnit);
  double PixelsPerUnit() const { return pixelsPerUnit_; }

  /// What was drawn within the area, in map units, is out of date.
  void Invalidate(const AGRect& area);
  void InvalidateAll();

  /// The tiles that a view needs, the middle first, made if they are not there; not yet drawn.
  std::vector<Tile*> Look(const ViewTransform& view, const AGSize& size);
  /// Brings a tile up to date.
  void Draw(Tile* tile);
  /// The tile of a place that a view looked at; null for another.
  Tile* Find(int column, int row);
  /// Brings tiles up to date, a band of one at least, until the time is up. False when some are left.
  bool DrawWithin(std::chrono::microseconds budget, const std::vector<Tile*>& tiles);

  /// The tiles of the zoom before, for as long as the new ones are not all drawn.
  const std::map<std::pair<int, int>, Tile>& Former() const { return former_; }
  double FormerPixelsPerUnit() const { return formerPixelsPerUnit_; }
  void DropFormer() { former_.clear(); }

 private:
  AGRect AreaOf(const Tile& tile) const;
  AGRect TopBand(const AGRect& area) const;
  void DrawBand(Tile* tile);
  void DrawArea(Tile* tile, const AGRect& area) const;
  void DrawPage(const AGContext& context) const;
  void DrawGrid(const AGContext& context, const AGRect& area) const;
  void DropUnseen();

  const Document* document_;
  Grid grid_;
  DrawnObjects drawnObjects_;
  bool withPage_ = true;
  double pixelsPerUnit_ = 1;
  std::map<std::pair<int, int>, Tile> tiles_;
  std::map<std::pair<int, int>, Tile> former_;
  double formerPixelsPerUnit_ = 1;
  std::uint64_t look_ = 0;
  std::uint64_t versions_ = 0;
};

}  // namespace host

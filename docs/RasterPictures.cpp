// Draws the pictures of docs/raster.md with the program's own kit: what the engine's cells, bits and coverage hold for
// one small shape, enlarged.
//   build/release/bin/raster_pictures docs/pictures
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AGContext.h"
#include "host/storage/WholeFiles.h"
#include "platform/raster/FillEdges.h"
#include "platform/raster/Raster.h"

namespace {

constexpr int kColumns = 24;
constexpr int kRows = 12;
constexpr double kZoom = 24;
const AGColor kInk(20, 60, 140, 255);
const AGColor kLines(190, 190, 190, 255);

using Points = std::vector<raster::Point>;

const Points kEdge = {{3.2, 0}, {14.7, 12}, {24, 12}, {24, 0}};
const Points kShape = {{2.3, 1.4}, {21.6, 3.2}, {18.4, 10.7}, {5.1, 8.9}};

raster::Shape ShapeOf(const std::vector<raster::Verb>& verbs, const Points& points) {
  raster::Shape shape;
  shape.path = {verbs.data(), verbs.size(), &points.front().x, points.size()};
  return shape;
}

std::vector<raster::Verb> PolygonVerbs(const Points& points) {
  std::vector<raster::Verb> verbs(points.size(), raster::Verb::kLine);
  verbs.front() = raster::Verb::kMove;
  return verbs;
}

// A bitmap of large squares, one a pixel of the shape.
class Picture {
 public:
  Picture()
      : bitmap_(AGSize{kColumns * kZoom, kRows * kZoom}, AGBitmap::kFlagZeroFill),
        context_(bitmap_.GetContextOfBitmap()) {
    context_.antialias = true;
    context_.ClearPixels(kAGColorWhite);
  }

  static AGRect Square(int x, int y, int width = 1) {
    return {x * kZoom, (kRows - 1 - y) * kZoom, (x + width) * kZoom, (kRows - y) * kZoom};
  }
  void Fill(const AGRect& rect, AGColor color) {
    context_.brush.SetStyleSolid(color);
    context_.pen.SetStyleNone();
    context_.DrawRect(rect);
  }
  void Grid() {
    context_.brush.SetStyleNone();
    context_.pen.SetStyleSolid(kLines, 1, kAGPenSizeModeAbsolute);
    for (int x = 0; x <= kColumns; ++x) context_.DrawSegment({x * kZoom, 0}, {x * kZoom, kRows * kZoom});
    for (int y = 0; y <= kRows; ++y) context_.DrawSegment({0, y * kZoom}, {kColumns * kZoom, y * kZoom});
  }
  void Outline(const Points& points) {
    AGPointArray corners;
    for (const raster::Point& p : points) corners.Append({p.x * kZoom, (kRows - p.y) * kZoom});
    context_.brush.SetStyleNone();
    context_.pen.SetStyleSolid(AGColor(200, 30, 30, 255), 2, kAGPenSizeModeAbsolute);
    context_.DrawLines(corners, true);
  }
  bool Save(const std::string& path) {
    if (const auto done = host::SavePNG(bitmap_, path); done) return true;
    std::fprintf(stderr, "can't write %s\n", path.c_str());
    return false;
  }

 private:
  AGBitmap bitmap_;
  AGContext context_;
};

AGColor Share(double share, AGColor color) {
  const auto mix = [share](unsigned int channel) {
    return static_cast<unsigned char>(255 - share * (255 - channel) + 0.5);
  };
  return {mix(color.Red()), mix(color.Green()), mix(color.Blue()), 255};
}

bool DrawCoverage(const Points& points, const std::string& path) {
  const std::vector<raster::Verb> verbs = PolygonVerbs(points);
  unsigned char coverage[kRows][kColumns];
  if (!raster::Cover(ShapeOf(verbs, points), {0, 0, kColumns, kRows}, coverage[0], kColumns)) return false;
  Picture picture;
  for (int y = 0; y < kRows; ++y) {
    for (int x = 0; x < kColumns; ++x) picture.Fill(Picture::Square(x, y), Share(coverage[y][x] / 255.0, kInk));
  }
  picture.Grid();
  picture.Outline(points);
  return picture.Save(path);
}

// What the edges leave in the cells, as many blue as one way and as many orange as the other; the sums along the rows
// are the coverage. Then the bits: the groups of four pixels that an edge touched.
bool DrawCells(const Points& points, const std::string& cellsPath, const std::string& groupsPath) {
  const std::unique_ptr<raster::Workspace> workspace = raster::Workspace::New();
  if (workspace == nullptr) return false;
  const raster::Box box{0, 0, kColumns, kRows};
  raster::Tile<std::int32_t> tile(*workspace, box);
  raster::Edges<std::int32_t> edges(&tile, true);
  raster::FillEdges<std::int32_t> fill(&edges);
  const std::vector<raster::Verb> verbs = PolygonVerbs(points);
  raster::Visit(ShapeOf(verbs, points).path, fill);
  fill.Close();
  Picture cells;
  Picture groups;
  for (int y = 0; y < kRows; ++y) {
    const std::uint64_t bits = tile.bits[static_cast<std::size_t>(y) * tile.bitStride];
    for (int x = 0; x < kColumns; ++x) {
      const double value = tile.cells[static_cast<std::size_t>(y) * tile.stride + static_cast<std::size_t>(x)] /
                           static_cast<double>(raster::kFull);
      cells.Fill(Picture::Square(x, y),
                 Share(std::fmin(std::fabs(value), 1), value < 0 ? AGColor(230, 130, 20, 255) : kInk));
    }
    for (int x = 0; x < kColumns; x += raster::kGroup) {
      if ((bits >> (x / raster::kGroup) & 1) != 0) groups.Fill(Picture::Square(x, y, raster::kGroup), Share(0.4, kInk));
    }
  }
  std::vector<unsigned char> swept(kColumns * kRows);
  raster::SweepToBytes(tile, raster::FillRule::kNonZero, swept.data(),
                       kColumns);  // leaves the cells as they were found
  cells.Grid();
  cells.Outline(points);
  groups.Grid();
  groups.Outline(points);
  return cells.Save(cellsPath) && groups.Save(groupsPath);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: raster_pictures FOLDER\n");
    return 2;
  }
  const std::string folder = argv[1];
  const bool isDone = DrawCoverage(kEdge, folder + "/raster-edge.png") &&
                      DrawCoverage(kShape, folder + "/raster-coverage.png") &&
                      DrawCells(kShape, folder + "/raster-cells.png", folder + "/raster-groups.png");
  return isDone ? 0 : 1;
}

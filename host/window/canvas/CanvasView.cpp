#include "host/window/canvas/CanvasView.h"

#include <gdkmm/cursor.h>
#include <gdkmm/memorytexture.h>
#include <glibmm/main.h>
#include <gtkmm/snapshot.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "AKPlatform/AKVectorContext.h"
#include "host/model/ObjectProperties.h"
#include "host/text/Localisation.h"
#include "host/view/Outlines.h"
#include "host/window/SlideStep.h"
#include "host/window/canvas/CanvasOverlay.h"

namespace host {
namespace {

// What a frame may take to draw tiles: at 60 frames a second there is time left to show them.
constexpr std::chrono::milliseconds kFrameBudget{10};
// The same when there is more to draw than the frame before could: showing a frame has a price of its own.
constexpr std::chrono::milliseconds kBusyFrameBudget{25};
constexpr double kFitMargin = 30;
constexpr Text kHint =
    N_("Choose a tool on the left and drag across the page, or press Insert.\n\nCtrl+O opens a document. F1 lists all "
       "keys.");

graphene_rect_t RectOf(double x, double y, double width, double height) {
  graphene_rect_t rect;
  graphene_rect_init(&rect, static_cast<float>(x), static_cast<float>(y), static_cast<float>(width),
                     static_cast<float>(height));
  return rect;
}

// A texture with a copy of the pixels, which go on changing.
Glib::RefPtr<Gdk::Texture> TextureOf(const AGBitmap& bitmap) {
  const gsize stride = bitmap.RowStride() * gsize{4};
  const auto bytes = Glib::Bytes::create(bitmap.Pixels(), stride * bitmap.Height());
  return Gdk::MemoryTexture::create(static_cast<int>(bitmap.Width()), static_cast<int>(bitmap.Height()),
                                    Gdk::MemoryTexture::Format::B8G8R8A8_PREMULTIPLIED, bytes, stride);
}

const char* CursorName(PointerTool::Cursor cursor) {
  switch (cursor) {
    case PointerTool::Cursor::kMove:
      return "move";
    case PointerTool::Cursor::kCross:
      return "crosshair";
    case PointerTool::Cursor::kRotate:
      return "grab";
    case PointerTool::Cursor::kInner:
      return "pointer";
    case PointerTool::Cursor::kEastWest:
      return "ew-resize";
    case PointerTool::Cursor::kNorthSouth:
      return "ns-resize";
    case PointerTool::Cursor::kRising:
      return "nesw-resize";
    case PointerTool::Cursor::kFalling:
      return "nwse-resize";
    default:
      return "default";
  }
}

}  // namespace

CanvasView::CanvasView()
    : Glib::ObjectBase("ObjectHostCanvas"),
      horizontal_(Gtk::Adjustment::create(0, 0, 0, 20, 200, 0)),
      vertical_(Gtk::Adjustment::create(0, 0, 0, 20, 200, 0)) {
  set_focusable(true);
  set_overflow(Gtk::Overflow::HIDDEN);
  set_hexpand(true);
  set_vexpand(true);
  add_css_class("canvas");
  g_object_set(gobj(), "accessible-role", GTK_ACCESSIBLE_ROLE_IMG, nullptr);
  gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, Tr("Drawing"), -1);
  horizontal_->signal_value_changed().connect([this] { OnAdjusted(); });
  vertical_->signal_value_changed().connect([this] { OnAdjusted(); });
  property_scale_factor().signal_changed().connect([this] {
    view_.SetDeviceScale(get_scale_factor());
    ViewChanged();
  });
  AddPointer();
  AddPanning();
  AddScrolling();
  AddKeys();
  AddMenu();
  guideField_.SignalChosen().connect([this](double place) { MoveGuide(place); });
}

CanvasView::~CanvasView() {
  SetSession(nullptr);
  describing_.disconnect();
}

void CanvasView::SetSession(DocumentSession* session) {
  if (session_ != nullptr) session_->RemoveObserver(this);
  SlideStep::End();
  tool_.SetSession(session);
  guides_.SetSession(session);
  session_ = session;
  tiles_.SetDocument(session == nullptr ? nullptr : &session->Doc());
  DropShifted();
  fitted_ = false;
  if (session_ != nullptr) session_->AddObserver(this);
  if (get_width() > 0) ZoomToFit();
  DescribeSoon();
  queue_draw();
}

void CanvasView::DescribeSoon() {
  if (describing_.connected()) return;
  describing_ = Glib::signal_idle().connect([this] {
    if (tool_.IsDragging()) return false;  // its end tells again
    const std::string words = session_ == nullptr ? "" : Description();
    gtk_accessible_update_property(GTK_ACCESSIBLE(gobj()), GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, words.c_str(), -1);
    return false;
  });
}

std::string CanvasView::Description() const {
  const ObjectIDs& ids = session_->Selection().IDs();
  AGRect box;
  if (const auto guide = guides_.Chosen()) {
    return NameOf(*guide) + ": " + LengthText(guide->place, session_->Doc().Aids().unit);
  }
  if (ids.empty() || !session_->Selection().GetShownBox(&box)) {
    return Tr(session_->Doc().ObjectCount() == 0 ? kHint : N_("Nothing is selected"));
  }
  const std::string what = ids.size() == 1 ? ClassName(session_->Doc().Find(ids[0])->classID)
                                           : TrWith(N_("%s objects"), std::to_string(ids.size()));
  char place[96];
  std::snprintf(place, sizeof(place), ": %.1f, %.1f, %.1f × %.1f", box.x0, box.y0, box.Width(), box.Height());
  const Handle taken = TakenHandle();
  return what + place + (taken == Handle::kNone ? "" : "; " + NameOf(taken));
}

void CanvasView::OnSelectionChanged() {
  if (!session_->Selection().IsEmpty()) guides_.ChooseNone();
  handleKeys_.LetGo();
  DescribeSoon();
  queue_draw();
}

void CanvasView::OnSelectionShifted() {
  shifted_.Follow(*session_);
  queue_draw();
}

void CanvasView::OnAreaChanged(const AGRect& area) {
  tiles_.Invalidate(area);
  shifted_.Invalidate(area);
  queue_draw();
}

void CanvasView::OnPageChanged() {
  DropShifted();
  tiles_.InvalidateAll();
  UpdateAdjustments();
  queue_draw();
}

void CanvasView::SetNewClass(std::optional<AKClassID> classID, bool stays) {
  SlideStep::End();
  toolStays_ = stays;
  tool_.SetNewClass(classID);
  toolChanged_.emit();
  ShowPointer(lastPointer_, {});
}

void CanvasView::SetGrid(double spacing) {
  if (spacing == gridSpacing_) return;
  gridSpacing_ = spacing;
  tiles_.SetGrid({spacing});
  shifted_.SetGrid({spacing});
  queue_draw();
}

void CanvasView::SetSnap(const SnapRules& snap) {
  tool_.SetSnap(snap);
  guides_.SetSnap(snap);
}

AGSize CanvasView::Size() const { return {static_cast<double>(get_width()), static_cast<double>(get_height())}; }
AGPoint CanvasView::Middle() const { return {get_width() / 2.0, get_height() / 2.0}; }

void CanvasView::ZoomTo(double zoom) {
  view_.SetZoom(zoom, Middle());
  ViewChanged();
}

void CanvasView::ZoomBy(double factor) {
  view_.SetZoom(view_.Zoom() * factor, pointerInside_ ? lastPointer_ : Middle());
  ViewChanged();
}

void CanvasView::ZoomToFit() {
  if (session_ == nullptr) return;
  const AGSize page = session_->Doc().Page();
  view_.Fit({0, 0, page.width, page.height}, Size(), kFitMargin);
  fitted_ = true;
  ViewChanged();
}

void CanvasView::ZoomToSelection() {
  if (session_ != nullptr) ZoomToObjects(session_->Selection().IDs());
}

void CanvasView::ZoomToDrawing() {
  if (session_ != nullptr) ZoomToObjects(session_->ShownObjects());
}

void CanvasView::ZoomToObjects(const ObjectIDs& ids) {
  AGRect box;
  if (!session_->Selection().GetBox(ids, &box)) return;
  view_.Fit(box, Size(), 2 * kFitMargin);
  ViewChanged();
}

void CanvasView::ViewChanged() {
  UpdateAdjustments();
  viewChanged_.emit();
  queue_draw();
}

// The page with half a view of room around it can be scrolled to, and where the view is.
void CanvasView::UpdateAdjustments() {
  if (session_ == nullptr || get_width() == 0) return;
  adjusting_ = true;
  const AGSize page = session_->Doc().Page();
  const AGSize size = Size();
  const double x = static_cast<double>(view_.OffsetX()) / view_.DeviceScale();
  const double y = static_cast<double>(view_.OffsetY()) / view_.DeviceScale();
  const double left = std::min(x, -size.width / 2);
  const double right = std::max(x + size.width, page.width * view_.Zoom() + size.width / 2);
  const double top = std::min(y, -page.height * view_.Zoom() - size.height / 2);
  const double bottom = std::max(y + size.height, size.height / 2);
  horizontal_->configure(x, left, right, 20, size.width * 0.9, size.width);
  vertical_->configure(y, top, bottom, 20, size.height * 0.9, size.height);
  adjusting_ = false;
}

void CanvasView::OnAdjusted() {
  if (adjusting_) return;
  view_.SetOffset(std::llround(horizontal_->get_value() * view_.DeviceScale()),
                  std::llround(vertical_->get_value() * view_.DeviceScale()));
  viewChanged_.emit();
  queue_draw();
}

void CanvasView::measure_vfunc(Gtk::Orientation, int, int& minimum, int& natural, int& minimumBaseline,
                               int& naturalBaseline) const {
  minimum = 100;
  natural = 600;
  minimumBaseline = naturalBaseline = -1;
}

void CanvasView::size_allocate_vfunc(int width, int height, int) {
  menu_.Place();
  guideField_.Place();
  if (width <= 0 || height <= 0) return;
  view_.SetDeviceScale(get_scale_factor());
  tool_.SetSize(Size());
  if (!fitted_) {
    ZoomToFit();
  } else {
    UpdateAdjustments();
    viewChanged_.emit();
  }
}

graphene_rect_t CanvasView::RectOfTile(const TileCache::Tile& tile, const ViewTransform& view, double scale) const {
  const double side = TileCache::kSide * scale;
  return RectOf(tile.column * side - static_cast<double>(view.OffsetX()) / view.DeviceScale(),
                tile.row * side - static_cast<double>(view.OffsetY()) / view.DeviceScale(), side, side);
}

void CanvasView::AppendTile(Gtk::Snapshot& snapshot, const TileCache::Tile& tile, const ViewTransform& view,
                            double scale, Textures* textures) {
  if (!tile.drawn) return;
  Shown& shown = (*textures)[{tile.column, tile.row}];
  if (shown.texture == nullptr || shown.version != tile.version) {
    shown.texture = TextureOf(*tile.bitmap);
    shown.version = tile.version;
  }
  const graphene_rect_t rect = RectOfTile(tile, view, scale);
  const graphene_rect_t whole = RectOf(0, 0, get_width(), get_height());
  if (graphene_rect_intersection(&rect, &whole, nullptr)) snapshot.append_texture(shown.texture, &rect);
}

void CanvasView::AppendFormer(Gtk::Snapshot& snapshot) {
  const double scale = view_.Zoom() / tiles_.FormerPixelsPerUnit();
  for (const auto& [place, tile] : tiles_.Former()) AppendTile(snapshot, tile, view_, scale, &formerTextures_);
}

void CanvasView::AppendSeen(Gtk::Snapshot& snapshot, const std::vector<TileCache::Tile*>& seen) {
  const double scale = 1 / view_.DeviceScale();
  const ViewTransform aside = shifted_.ShiftedView(view_);
  const auto above = shifted_.IsShown() ? shifted_.Above(view_, Size()) : std::vector<TileCache::Tile*>();
  for (const TileCache::Tile* tile : seen) {
    const TileCache::Tile* const beneath = shifted_.Beneath(*tile);
    if (beneath != nullptr) {
      AppendTile(snapshot, *beneath, view_, scale, &beneathTextures_);
    } else {
      AppendTile(snapshot, *tile, view_, scale, &textures_);
    }
    if (!shifted_.Covers(*tile)) continue;
    const graphene_rect_t rect = RectOfTile(*tile, view_, scale);
    gtk_snapshot_push_clip(snapshot.gobj(), &rect);
    for (const TileCache::Tile* moved : above) {
      const graphene_rect_t place = RectOfTile(*moved, aside, scale);
      if (!graphene_rect_intersection(&place, &rect, nullptr)) continue;
      AppendTile(snapshot, *moved, aside, scale, &aboveTextures_);
    }
    gtk_snapshot_pop(snapshot.gobj());
  }
}

void CanvasView::AppendOverlay(Gtk::Snapshot& snapshot) {
  const AGSize size = Size();
  Overlay overlay{SelectionFrame::Of(*session_),
                  SelectedOutlines(*session_, view_.Shown(size)),
                  {},
                  EnteredBox(*session_),
                  tool_.Band(),
                  tool_.SnapLines(),
                  Handle::kNone};
  overlay.taken = handleKeys_.Taken(overlay.frame, view_);
  if (const auto toCome = tool_.FrameToCome()) overlay.frame = overlay.frame.At(*toCome);
  if (pointerInside_ && !tool_.IsDragging()) overlay.hovered = HoverOutlines(*session_, hovered_);
  AGRect bounds;
  if (!GetOverlayBounds(overlay, view_, &bounds)) return;
  bounds = {std::max(bounds.x0, 0.0), std::max(bounds.y0, 0.0), std::min(bounds.x1, size.width),
            std::min(bounds.y1, size.height)};
  if (!(bounds.x1 > bounds.x0) || !(bounds.y1 > bounds.y0)) return;
  const graphene_rect_t rect = RectOf(bounds.x0, bounds.y0, bounds.x1 - bounds.x0, bounds.y1 - bounds.y0);
  const auto cairo = snapshot.append_cairo(&rect);
  CGContextRef port = CGContextCreateOverCairo(cairo->cobj(), size.width, size.height);
  if (port == nullptr) return;
  {
    AGContext context(port, size);
    context.transform = {1, 0, 0, -1, 0, size.height};  // the view has y down
    DrawOverlay(context, overlay, view_);
  }
  CGContextRelease(port);
}

// What is dragged in numbers, below and right of the pointer where there is room.
void CanvasView::AppendDragText(Gtk::Snapshot& snapshot) {
  constexpr double kAside = 16;
  constexpr double kRoom = 4;
  std::string text = tool_.DragText();
  if (const auto& guide = guides_.Dragged()) text = LengthText(guide->place, session_->Doc().Aids().unit);
  if (text.empty()) return;
  auto layout = create_pango_layout(text);
  int width = 0;
  int height = 0;
  layout->get_pixel_size(width, height);
  const double x = std::clamp(dragPoint_.x + kAside, kRoom, std::max(kRoom, Size().width - width - kRoom));
  const double y = std::clamp(dragPoint_.y + kAside, kRoom, std::max(kRoom, Size().height - height - kRoom));
  const graphene_rect_t rect = RectOf(x - kRoom, y - kRoom / 2, width + 2 * kRoom, height + kRoom);
  const GdkRGBA back{1, 1, 0.85F, 0.95F};
  const GdkRGBA ink{0, 0, 0, 1};
  gtk_snapshot_append_color(snapshot.gobj(), &back, &rect);
  const graphene_point_t place{static_cast<float>(x), static_cast<float>(y)};
  gtk_snapshot_save(snapshot.gobj());
  gtk_snapshot_translate(snapshot.gobj(), &place);
  gtk_snapshot_append_layout(snapshot.gobj(), layout->gobj(), &ink);
  gtk_snapshot_restore(snapshot.gobj());
}

// How to begin, on the page of an empty document where there is room.
void CanvasView::AppendHint(Gtk::Snapshot& snapshot) {
  constexpr double kRoom = 24;
  constexpr double kWidest = 480;
  if (session_->Doc().ObjectCount() > 0 || tool_.IsDragging()) return;
  const AGSize page = session_->Doc().Page();
  const AGPoint low = view_.ToView({0, 0});
  const AGPoint high = view_.ToView({page.width, page.height});
  const AGRect seen{std::max(low.x, 0.0), std::max(high.y, 0.0), std::min(high.x, Size().width),
                    std::min(low.y, Size().height)};
  auto layout = create_pango_layout(Tr(kHint));
  const int widest = static_cast<int>(std::min(kWidest, seen.Width() - 2 * kRoom));
  layout->set_width(widest * Pango::SCALE);
  layout->set_alignment(Pango::Alignment::CENTER);
  layout->set_wrap(Pango::WrapMode::WORD);
  int width = 0;
  int height = 0;
  layout->get_pixel_size(width, height);
  if (seen.Width() < width + 2 * kRoom || seen.Height() < height + 2 * kRoom) return;
  const AGColor paper = session_->Doc().Background();
  const bool dark = paper.Alpha() > 127 && paper.Red() + paper.Green() + paper.Blue() < 3 * 128;
  const GdkRGBA ink = dark ? GdkRGBA{1, 1, 1, 0.75F} : GdkRGBA{0, 0, 0, 0.65F};
  const graphene_point_t place{static_cast<float>(seen.Center().x - widest / 2.0),
                               static_cast<float>(seen.Center().y - height / 2.0)};
  gtk_snapshot_save(snapshot.gobj());
  gtk_snapshot_translate(snapshot.gobj(), &place);
  gtk_snapshot_append_layout(snapshot.gobj(), layout->gobj(), &ink);
  gtk_snapshot_restore(snapshot.gobj());
}

bool CanvasView::DrawTiles(const std::vector<TileCache::Tile*>& seen, std::chrono::milliseconds budget) {
  if (shifted_.IsMoving()) return shifted_.DrawWithin(budget, view_, Size());
  if (!tiles_.DrawWithin(budget, seen)) return false;
  tiles_.DropFormer();
  formerTextures_.clear();
  if (shifted_.IsShown()) DropShifted();
  return true;
}

void CanvasView::DropShifted() {
  shifted_.Drop();
  beneathTextures_.clear();
  aboveTextures_.clear();
}

void CanvasView::ForgetOldTextures() {
  if (texturesScale_ != view_.PixelsPerUnit()) {
    if (tiles_.Former().empty()) formerTextures_ = std::move(textures_);
    for (Textures* textures : {&textures_, &beneathTextures_, &aboveTextures_}) textures->clear();
    texturesScale_ = view_.PixelsPerUnit();
  }
  for (Textures* textures : {&textures_, &beneathTextures_, &aboveTextures_}) {
    if (textures->size() > 2 * TileCache::kMostTiles) textures->clear();
  }
}

void CanvasView::snapshot_vfunc(const Glib::RefPtr<Gtk::Snapshot>& snapshot) {
  if (session_ == nullptr) return;
  ForgetOldTextures();
  const std::vector<TileCache::Tile*> seen = tiles_.Look(view_, Size());
  const bool complete = DrawTiles(seen, busy_ ? kBusyFrameBudget : kFrameBudget);
  busy_ = !complete;
  if (busy_) {
    // Not from within a frame: a widget asks for the next one afterwards.
    Glib::signal_idle().connect_once([this] { queue_draw(); });
  }
  AppendFormer(*snapshot.get());
  AppendSeen(*snapshot.get(), seen);
  AppendGuides(*snapshot.get());
  AppendOverlay(*snapshot.get());
  AppendDragText(*snapshot.get());
  AppendHint(*snapshot.get());
}

void CanvasView::ShowPointer(const AGPoint& point, PointerModifiers modifiers) {
  const PointerTool::Hover hover = tool_.HoverAt(point, modifiers);
  if (const auto guide = GuideAt(point, modifiers)) {
    set_cursor(guide->axis == 0 ? "ew-resize" : "ns-resize");
  } else {
    set_cursor(Glib::ustring(CursorName(hover.cursor)));
  }
  if (std::exchange(hovered_, hover.object) != hover.object) queue_draw();
}

void CanvasView::RevealObject(ObjectID object) {
  const AGRect box = TurnedBox(session_->Doc().Find(object)->Placement());
  if (view_.Reveal(box, Size(), kFitMargin)) ViewChanged();
}

}  // namespace host

#include "host/window/dialogs/GalleryWindow.h"

#include <gtkmm/drawingarea.h>
#include <gtkmm/scrolledwindow.h>

#include <algorithm>

#include "AKPlatform/AKVectorContext.h"
#include "CoreGraphics/CGContext.h"
#include "host/gallery/Gallery.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

constexpr double kScale = 2;
constexpr double kGap = 10;
constexpr double kLabel = 14;
constexpr std::size_t kFirstColumns = 6;  // until the window is drawn in its own width

class GalleryArea : public Gtk::DrawingArea {
 public:
  GalleryArea() : items_(GalleryItems()) {
    set_content_width(static_cast<int>(static_cast<double>(kFirstColumns) * CellWidth() + kGap));
    SetHeightFor(kFirstColumns);
    set_draw_func(
        [this](const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) { Draw(cairo, width, height); });
  }

 private:
  static double CellWidth() { return kGalleryWidth * kScale + kGap; }
  static double CellHeight() { return kGalleryHeight * kScale + kGap + kLabel; }

  void SetHeightFor(std::size_t columns) {
    const std::size_t rows = (items_.size() + columns - 1) / columns;
    set_content_height(static_cast<int>(static_cast<double>(rows) * CellHeight() + kGap));
  }

  void Draw(const Cairo::RefPtr<Cairo::Context>& cairo, int width, int height) {
    const std::size_t columns = static_cast<std::size_t>(std::max(1.0, (width - kGap) / CellWidth()));
    SetHeightFor(columns);
    const Gdk::RGBA ink = get_style_context()->get_color();
    for (std::size_t i = 0; i < items_.size(); ++i) {
      const double x = kGap + static_cast<double>(i % columns) * CellWidth();
      const std::size_t row = i / columns;
      const double y = kGap + static_cast<double>(row) * CellHeight();
      if (y > height) break;
      DrawItem(cairo, items_[i], x, y);
      cairo->set_source_rgb(ink.get_red(), ink.get_green(), ink.get_blue());
      cairo->set_font_size(9);
      cairo->move_to(x, y + kGalleryHeight * kScale + 10);
      cairo->show_text(items_[i].name);
    }
  }

  // An item expects white paper and y up from its lower left corner.
  static void DrawItem(const Cairo::RefPtr<Cairo::Context>& cairo, const GalleryItem& item, double x, double y) {
    cairo->save();
    cairo->translate(x, y);
    cairo->rectangle(0, 0, kGalleryWidth * kScale, kGalleryHeight * kScale);
    cairo->clip_preserve();
    cairo->set_source_rgb(1, 1, 1);
    cairo->fill();
    cairo->scale(kScale, kScale);
    CGContextRef port = CGContextCreateOverCairo(cairo->cobj(), kGalleryWidth, kGalleryHeight);
    if (port != nullptr) {
      AGContext context(port, {kGalleryWidth, kGalleryHeight});
      item.draw(context);
      CGContextRelease(port);
    }
    cairo->restore();
  }

  std::vector<GalleryItem> items_;
};

}  // namespace

void ShowGallery(Gtk::Window& parent) {
  auto* const window = new Gtk::Window;
  window->set_title(Tr("Gallery"));
  window->set_default_size(900, 700);
  window->set_transient_for(parent);
  window->set_destroy_with_parent(true);
  auto* const scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
  scrolled->set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
  scrolled->set_child(*Gtk::make_managed<GalleryArea>());
  window->set_child(*scrolled);
  window->signal_hide().connect([window] { delete window; });
  window->show();
}

}  // namespace host

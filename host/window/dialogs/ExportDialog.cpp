#include "host/window/dialogs/ExportDialog.h"

#include <glibmm/main.h>
#include <gtkmm/box.h>
#include <gtkmm/dialog.h>
#include <gtkmm/stringlist.h>

#include <algorithm>
#include <chrono>

#include "host/text/Localisation.h"
#include "host/window/dialogs/CloseByEscape.h"
#include "host/window/dialogs/ProgressWindow.h"
#include "host/window/dialogs/Question.h"

namespace host {
namespace {

struct Kind {
  const char* name;
  const char* extension;
  bool hasQuality;
  bool canBeTransparent;
};
constexpr Kind kKinds[] = {{"PNG", ".png", false, true},
                           {"JPEG", ".jpg", true, false},
                           {"TIFF", ".tiff", false, false},
                           {"PDF", ".pdf", false, true},
                           {"SVG", ".svg", false, true}};

enum Area : unsigned int { kPage, kDrawing, kSelection };
constexpr double kInch = 72;  // map units
constexpr double kLeastScale = 0.05;
constexpr double kMostScale = 40;
constexpr double kMostPixels = 1000000;

constexpr auto kPatience = std::chrono::milliseconds(300);

// Shows the window once the work turns out to be long.
class WindowProgress final : public Progress {
 public:
  WindowProgress(Gtk::Window& parent, std::string text)
      : window_(&parent, Tr("Export")), text_(std::move(text)), start_(std::chrono::steady_clock::now()) {}

  bool Step(double fraction) override {
    if (std::chrono::steady_clock::now() - start_ < kPatience) return true;
    stopped_ = stopped_ || !window_.Update(fraction, text_);
    return !stopped_;
  }
  bool WasStopped() const { return stopped_; }

 private:
  ProgressWindow window_;
  std::string text_;
  std::chrono::steady_clock::time_point start_;
  bool stopped_ = false;
};

std::string BaseName(const std::string& path) {
  const std::string name = path.substr(path.rfind('/') + 1);
  return name.substr(0, name.rfind('.'));
}

}  // namespace

ExportDialog::ExportDialog(Gtk::Window& parent, DocumentSession& session,
                           std::function<void(const std::string&, const Result<>&)> report)
    : parent_(parent),
      session_(session),
      report_(std::move(report)),
      scale_(kLeastScale, kMostScale, 0.25, 2, Tr("Scale")),
      resolution_(kLeastScale * kInch, kMostScale * kInch, 12, 1, Tr("Dots per inch")),
      width_(1, kMostPixels, 10, 0, Tr("Width in pixels")),
      transparent_(Tr("Transparent background")),
      quality_(0, 100, 1, 0, Tr("Quality")) {
  set_title(Tr("Export"));
  set_transient_for(parent);
  set_modal(true);
  set_resizable(false);
  AddRows();
  auto* const box = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 12);
  box->set_margin(16);
  box->append(grid_);
  auto* const buttons = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 8);
  buttons->set_halign(Gtk::Align::END);
  auto* const cancel = Gtk::make_managed<Gtk::Button>(Tr("_Cancel"), true);
  auto* const accept = Gtk::make_managed<Gtk::Button>(Tr("_Export…"), true);
  accept->add_css_class("suggested-action");
  cancel->signal_clicked().connect([this] { close(); });
  accept->signal_clicked().connect([this] { ChooseFile(); });
  buttons->append(*cancel);
  buttons->append(*accept);
  box->append(*buttons);
  set_child(*box);
  set_default_widget(*accept);
  signal_hide().connect([this] { Glib::signal_idle().connect_once([this] { delete this; }); });
  CloseByEscape(*this);
  ShowWhatCounts();
  present();
}

void ExportDialog::AddRows() {
  std::vector<Glib::ustring> names;
  for (const Kind& kind : kKinds) names.emplace_back(kind.name);
  kind_.set_model(Gtk::StringList::create(names));
  kind_.property_selected().signal_changed().connect([this] { ShowWhatCounts(); });
  std::vector<Glib::ustring> areas = {Tr("Page"), Tr("Drawing")};
  if (!session_.Selection().IsEmpty()) areas.emplace_back(Tr("Selection"));
  area_.set_model(Gtk::StringList::create(areas));
  area_.property_selected().signal_changed().connect([this] { ShowScale(scale_.get_value()); });
  scale_.SignalChosen().connect([this](double scale) { ShowScale(scale); });
  resolution_.SignalChosen().connect([this](double dots) { ShowScale(dots / kInch); });
  width_.SignalChosen().connect([this](double pixels) { ShowScale(pixels / AreaSize().width); });
  ShowScale(1);
  quality_.Show(90);
  grid_.Row(0, Tr("Kind"), kind_);
  grid_.Row(1, Tr("Area"), area_);
  grid_.Row(2, Tr("Scale"), scale_);
  grid_.Row(3, Tr("Dots per inch"), resolution_);
  grid_.Row(4, Tr("Width in pixels"), width_);
  grid_.Row(5, Tr("Quality"), quality_);
  grid_.attach(transparent_, 1, 6);
}

void ExportDialog::ShowScale(double scale) {
  scale = std::clamp(scale, kLeastScale, kMostScale);
  scale_.Show(scale);
  resolution_.Show(scale * kInch);
  width_.Show(scale * AreaSize().width);
}

void ExportDialog::TakeArea(PictureOptions* options) const {
  AGRect box;
  const unsigned int area = area_.get_selected();
  if (area == kPage) return;
  const ObjectIDs ids = area == kSelection ? session_.Selection().IDs() : session_.ShownObjects();
  if (!GetPictureBox(session_.Doc(), ids, &box)) return;
  options->area = box;
  if (area == kSelection) options->objects = ids;
}

AGSize ExportDialog::AreaSize() const {
  PictureOptions options;
  TakeArea(&options);
  return options.area ? AGSize{options.area->Width(), options.area->Height()} : session_.Doc().Page();
}

void ExportDialog::ShowWhatCounts() {
  const Kind& kind = kKinds[kind_.get_selected()];
  quality_.set_sensitive(kind.hasQuality);
  transparent_.set_sensitive(kind.canBeTransparent);
}

void ExportDialog::ChooseFile() {
  const std::string own = session_.File().Path();
  const std::string base = own.empty() ? Tr("Untitled") : own.substr(0, own.rfind('/') + 1) + BaseName(own);
  const FileQuestion question{Tr("Export"), true, base + kKinds[kind_.get_selected()].extension, {}};
  chooser_.Ask(this, question, [this](const std::optional<std::string>& path) {
    if (!path) return;
    PictureKind known{};
    AskForPath(*this, *path, PictureKindOf(*path, &known) ? "" : kKinds[kind_.get_selected()].extension,
               [this](const std::string& whole) { Export(whole); });
  });
}

void ExportDialog::Export(const std::string& path) {
  PictureOptions options;
  TakeArea(&options);
  options.scale = scale_.get_value();
  options.transparent = transparent_.get_sensitive() && transparent_.get_active();
  options.quality = quality_.get_value() / 100;
  set_visible(false);
  WindowProgress progress(parent_, TrWith("Exporting %s", path));
  const auto done = ExportPicture(session_.Doc(), path, options, &progress);
  if (!progress.WasStopped()) report_(path, done);
}

}  // namespace host

#include "host/window/dialogs/PrintDialog.h"

#include <giomm/appinfo.h>
#include <giomm/file.h>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <gtkmm/printcontext.h>
#include <gtkmm/printoperation.h>

#include <cmath>
#include <filesystem>
#include <list>
#include <memory>
#include <string_view>

#include "host/model/Paper.h"
#include "host/pictures/PrintedPage.h"
#include "host/storage/DocumentFile.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

using Operation = Glib::RefPtr<Gtk::PrintOperation>;

struct SheetName {
  std::string_view paper;
  const char* standard;  // as printers know it
};
constexpr SheetName kSheets[] = {{"A3", "iso_a3"},      {"A4", "iso_a4"},        {"A5", "iso_a5"},
                                 {"A6", "iso_a6"},      {"B5", "iso_b5"},        {"Letter", "na_letter"},
                                 {"Legal", "na_legal"}, {"Tabloid", "na_ledger"}};

// Printing goes on while the document is edited, or gone.
Result<std::shared_ptr<const Document>> CopyOf(const Document& document) {
  AKFile written(AKFile::kModeMemory);
  const void* data = nullptr;
  unsigned long long size = 0;
  if (written.CreateForReadWrite() != 0 || WriteDocument(document, written, nullptr) != 0 ||
      written.GetMemoryStreamDataPtr(&data, &size) != 0) {
    return Problem(N_("there is not enough memory for the picture"));
  }
  AKFile stream(data, static_cast<unsigned int>(size));
  stream.OpenForRead();
  auto copy = ReadDocument(stream, "");
  if (!copy) return copy.Why();
  return std::shared_ptr<const Document>(std::move(*copy));
}

bool IsNear(const AGSize& a, const AGSize& b) {
  constexpr double kRounded = 0.5;
  return std::fabs(a.width - b.width) < kRounded && std::fabs(a.height - b.height) < kRounded;
}

// The sheet that the page is: one that has a name, or one of its own.
Glib::RefPtr<Gtk::PageSetup> SetupOf(const AGSize& page) {
  auto setup = Gtk::PageSetup::create();
  const AGSize upright = Oriented(page, Orientation::kPortrait);
  for (const SheetName& sheet : kSheets) {
    if (!IsNear(FindPaper(sheet.paper)->size, upright)) continue;
    setup->set_paper_size(Gtk::PaperSize(sheet.standard));
    const bool isWide = page.width > page.height;
    setup->set_orientation(isWide ? Gtk::PageOrientation::LANDSCAPE : Gtk::PageOrientation::PORTRAIT);
    return setup;
  }
  setup->set_paper_size(Gtk::PaperSize("custom_objecthost", Tr("Page"), page.width, page.height, Gtk::Unit::POINTS));
  return setup;
}

Operation NewOperation(const std::shared_ptr<const Document>& document) {
  Operation operation = Gtk::PrintOperation::create();
  operation->set_n_pages(1);
  operation->set_use_full_page(true);
  operation->set_unit(Gtk::Unit::POINTS);
  operation->set_default_page_setup(SetupOf(document->Page()));
  Gtk::PrintOperation* const raw = operation.get();
  operation->signal_draw_page().connect([document, raw](const Glib::RefPtr<Gtk::PrintContext>& sheet, int) {
    const auto cairo = sheet->get_cairo_context();
    if (!DrawPageOnSheet(*document, cairo->cobj(), {sheet->get_width(), sheet->get_height()})) raw->cancel();
  });
  return operation;
}

Problem WhyNotPrinted(const std::string& reason) { return Problem(N_("the page was not printed: %s"), {reason}); }

// Files that viewers look at, gone with the program.
class Previews {
 public:
  ~Previews() {
    std::error_code none;
    if (!folder_.empty()) std::filesystem::remove_all(folder_, none);
  }
  std::string Next() {
    if (folder_.empty()) {
      std::string pattern = (std::filesystem::temp_directory_path() / "objecthost-XXXXXX").string();
      if (g_mkdtemp(pattern.data()) == nullptr) return {};
      folder_ = pattern;
    }
    return folder_ + "/" + std::to_string(++count_) + ".pdf";
  }

 private:
  std::string folder_;
  int count_ = 0;
};

}  // namespace

void PrintDocument(Gtk::Window& window, const Document& document, const std::function<void(const Problem&)>& report) {
  static std::list<Operation> running;
  const auto copy = CopyOf(document);
  if (!copy) return report(copy.Why());
  const Operation operation = NewOperation(*copy);
  operation->set_allow_async(true);
  operation->set_show_progress(true);
  running.push_back(operation);
  const auto place = std::prev(running.end());
  operation->signal_done().connect([report, place](Gtk::PrintOperation::Result result) {
    if (result == Gtk::PrintOperation::Result::ERROR) {
      GError* error = nullptr;
      gtk_print_operation_get_error((*place)->gobj(), &error);
      report(WhyNotPrinted(error == nullptr ? "" : error->message));
      g_clear_error(&error);
    }
    Glib::signal_idle().connect_once([place] { running.erase(place); });
  });
  try {
    operation->run(Gtk::PrintOperation::Action::PRINT_DIALOG, window);
  } catch (const Glib::Error& error) {
    report(WhyNotPrinted(error.what()));
  }
}

Result<> PreviewPrint(Gtk::Window& window, const Document& document) {
  static Previews previews;
  const auto copy = CopyOf(document);
  if (!copy) return copy.Why();
  const std::string path = previews.Next();
  if (path.empty()) return WhyNotPrinted(g_strerror(errno));
  const Operation operation = NewOperation(*copy);
  operation->set_export_filename(path);
  try {
    const auto result = operation->run(Gtk::PrintOperation::Action::EXPORT, window);
    if (result != Gtk::PrintOperation::Result::APPLY) return WhyNotPrinted("");
    Gio::AppInfo::launch_default_for_uri(Gio::File::create_for_path(path)->get_uri());
  } catch (const Glib::Error& error) {
    return Problem(N_("the preview can't be shown: %s"), {std::string(error.what())});
  }
  return {};
}

}  // namespace host

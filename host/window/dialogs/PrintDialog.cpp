#include "host/window/dialogs/PrintDialog.h"

#include <giomm/appinfo.h>
#include <giomm/file.h>
#include <glibmm/fileutils.h>
#include <glibmm/main.h>
#include <gtkmm/printcontext.h>
#include <gtkmm/printoperation.h>

#include <filesystem>
#include <list>
#include <memory>

#include "host/pictures/PrintedPage.h"
#include "host/storage/DocumentFile.h"
#include "host/text/Localisation.h"
#include "host/window/dialogs/SheetSettings.h"

namespace host {
namespace {

using Operation = Glib::RefPtr<Gtk::PrintOperation>;

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

// What became of a page while it was drawn.
using Failure = std::shared_ptr<bool>;

Operation NewOperation(const std::shared_ptr<const Document>& document, const Failure& ranOut) {
  Operation operation = Gtk::PrintOperation::create();
  operation->set_n_pages(1);
  operation->set_use_full_page(true);
  operation->set_unit(Gtk::Unit::POINTS);
  operation->set_default_page_setup(SheetOf(document->Page()));
  Gtk::PrintOperation* const raw = operation.get();
  operation->signal_draw_page().connect([document, raw, ranOut](const Glib::RefPtr<Gtk::PrintContext>& sheet, int) {
    const auto cairo = sheet->get_cairo_context();
    if (DrawPageOnSheet(*document, cairo->cobj(), {sheet->get_width(), sheet->get_height()})) return;
    *ranOut = true;
    raw->cancel();
  });
  return operation;
}

Problem WhyNotPrinted(Problem::Part reason) { return Problem(N_("the page was not printed: %s"), {std::move(reason)}); }
Problem WhyNotDrawn() { return WhyNotPrinted(N_("there is not enough memory for the picture")); }

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
  const Failure ranOut = std::make_shared<bool>(false);
  const Operation operation = NewOperation(*copy, ranOut);
  operation->set_print_settings(KeptPrintSettings());
  operation->set_allow_async(true);
  operation->set_show_progress(true);
  running.push_back(operation);
  const auto place = std::prev(running.end());
  operation->signal_done().connect([report, place, ranOut](Gtk::PrintOperation::Result result) {
    if (result == Gtk::PrintOperation::Result::APPLY) KeepPrintSettings((*place)->get_print_settings());
    if (*ranOut) report(WhyNotDrawn());
    if (result == Gtk::PrintOperation::Result::ERROR) {
      GError* error = nullptr;
      gtk_print_operation_get_error((*place)->gobj(), &error);
      report(WhyNotPrinted(error == nullptr ? std::string() : std::string(error->message)));
      g_clear_error(&error);
    }
    Glib::signal_idle().connect_once([place] { running.erase(place); });
  });
  try {
    operation->run(Gtk::PrintOperation::Action::PRINT_DIALOG, window);
  } catch (const Glib::Error& error) {
    report(WhyNotPrinted(std::string(error.what())));
  }
}

Result<> PreviewPrint(Gtk::Window& window, const Document& document) {
  static Previews previews;
  const auto copy = CopyOf(document);
  if (!copy) return copy.Why();
  const std::string path = previews.Next();
  if (path.empty()) return WhyNotPrinted(std::string(g_strerror(errno)));
  const Failure ranOut = std::make_shared<bool>(false);
  const Operation operation = NewOperation(*copy, ranOut);
  operation->set_export_filename(path);
  try {
    const auto result = operation->run(Gtk::PrintOperation::Action::EXPORT, window);
    if (*ranOut) return WhyNotDrawn();
    if (result != Gtk::PrintOperation::Result::APPLY) return WhyNotPrinted(N_("it was given up"));
    Gio::AppInfo::launch_default_for_uri(Gio::File::create_for_path(path)->get_uri());
  } catch (const Glib::Error& error) {
    return Problem(N_("the preview can't be shown: %s"), {std::string(error.what())});
  }
  return {};
}

}  // namespace host

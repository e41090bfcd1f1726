#include "host/window/dialogs/SheetSettings.h"

#include <gtkmm/printoperation.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>

#include "host/model/Paper.h"
#include "host/text/Localisation.h"

namespace host {
namespace {

constexpr char kSettingsGroup[] = "Printer";

struct SheetName {
  std::string_view paper;
  const char* standard;  // as printers know it
};
constexpr SheetName kSheets[] = {{"A3", "iso_a3"},      {"A4", "iso_a4"},        {"A5", "iso_a5"},
                                 {"A6", "iso_a6"},      {"B5", "iso_b5"},        {"Letter", "na_letter"},
                                 {"Legal", "na_legal"}, {"Tabloid", "na_ledger"}};

bool IsNear(const AGSize& a, const AGSize& b) {
  constexpr double kRounded = 0.5;
  return std::fabs(a.width - b.width) < kRounded && std::fabs(a.height - b.height) < kRounded;
}

// One that has a name, or one of its own.
Glib::RefPtr<Gtk::PageSetup> SheetLike(const AGSize& page) {
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

std::string GroupOf(const AGSize& page) {
  return "Sheet " + std::to_string(std::lround(page.width)) + " " + std::to_string(std::lround(page.height));
}

std::string Folder() { return std::string(g_get_user_config_dir()) + "/objecthost"; }
std::string Path() { return Folder() + "/print.ini"; }

// The file, closed by who asks for it.
GKeyFile* Kept() {
  GKeyFile* const file = g_key_file_new();
  g_key_file_load_from_file(file, Path().c_str(), G_KEY_FILE_NONE, nullptr);
  return file;
}

template <typename Write>
void Keep(Write write) {
  GKeyFile* const file = Kept();
  write(file);
  GError* error = nullptr;
  g_mkdir_with_parents(Folder().c_str(), 0700);
  if (!g_key_file_save_to_file(file, Path().c_str(), &error)) {
    std::fprintf(stderr, "objecthost: can't keep what was chosen for printing: %s\n", error->message);
  }
  g_clear_error(&error);
  g_key_file_unref(file);
}

}  // namespace

Glib::RefPtr<Gtk::PageSetup> SheetOf(const AGSize& page) {
  GKeyFile* const file = Kept();
  GtkPageSetup* const kept = gtk_page_setup_new_from_key_file(file, GroupOf(page).c_str(), nullptr);
  g_key_file_unref(file);
  return kept == nullptr ? SheetLike(page) : Glib::wrap(kept);
}

void ChooseSheet(Gtk::Window& window, const AGSize& page) {
  Gtk::run_page_setup_dialog_async(
      window, SheetOf(page), KeptPrintSettings(), [page](const Glib::RefPtr<Gtk::PageSetup>& chosen) {
        if (chosen == nullptr) return;
        Keep([&](GKeyFile* file) { gtk_page_setup_to_key_file(chosen->gobj(), file, GroupOf(page).c_str()); });
      });
}

Glib::RefPtr<Gtk::PrintSettings> KeptPrintSettings() {
  GKeyFile* const file = Kept();
  GtkPrintSettings* const kept = gtk_print_settings_new_from_key_file(file, kSettingsGroup, nullptr);
  g_key_file_unref(file);
  return kept == nullptr ? Gtk::PrintSettings::create() : Glib::wrap(kept);
}

void KeepPrintSettings(const Glib::RefPtr<const Gtk::PrintSettings>& settings) {
  if (settings == nullptr) return;
  GtkPrintSettings* const kept = gtk_print_settings_copy(const_cast<GtkPrintSettings*>(settings->gobj()));
  for (const char* each :
       {GTK_PRINT_SETTINGS_N_COPIES, GTK_PRINT_SETTINGS_PRINT_PAGES, GTK_PRINT_SETTINGS_PAGE_RANGES,
        GTK_PRINT_SETTINGS_PAGE_SET, GTK_PRINT_SETTINGS_OUTPUT_URI, GTK_PRINT_SETTINGS_OUTPUT_BASENAME}) {
    gtk_print_settings_unset(kept, each);
  }
  Keep([kept](GKeyFile* file) { gtk_print_settings_to_key_file(kept, file, kSettingsGroup); });
  g_object_unref(kept);
}

}  // namespace host

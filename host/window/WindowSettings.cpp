#include "host/window/WindowSettings.h"

#include <gio/gio.h>

#include <cstdio>
#include <memory>
#include <vector>

namespace host {
namespace {

constexpr char kGroup[] = "Window";
constexpr int kLeastSide = 300;  // pixels
constexpr int kMostSide = 16384;

using KeyFile = std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)>;

std::string Folder() { return std::string(g_get_user_config_dir()) + "/objecthost"; }

void Read(GKeyFile* file, const char* key, bool* value) {
  GError* error = nullptr;
  const gboolean read = g_key_file_get_boolean(file, kGroup, key, &error);
  if (error == nullptr) *value = read != 0;
  g_clear_error(&error);
}

void Read(GKeyFile* file, const char* key, int* side) {
  const int read = g_key_file_get_integer(file, kGroup, key, nullptr);
  if (read >= kLeastSide && read <= kMostSide) *side = read;
}

WindowSettings Load() {
  WindowSettings settings;
  const KeyFile file(g_key_file_new(), &g_key_file_unref);
  g_key_file_load_from_file(file.get(), (Folder() + "/window.ini").c_str(), G_KEY_FILE_NONE, nullptr);
  Read(file.get(), "Width", &settings.width);
  Read(file.get(), "Height", &settings.height);
  Read(file.get(), "Maximized", &settings.maximized);
  Read(file.get(), "Dark", &settings.dark);
  Read(file.get(), "Grid", &settings.grid);
  Read(file.get(), "Snap", &settings.snap);
  Read(file.get(), "SnapToObjects", &settings.snapToObjects);
  Read(file.get(), "SnapToGuides", &settings.snapToGuides);
  Read(file.get(), "Snapping", &settings.snapping);
  Read(file.get(), "Guides", &settings.guides);
  Read(file.get(), "GuidesLocked", &settings.guidesLocked);
  Read(file.get(), "Rulers", &settings.rulers);
  gsize count = 0;
  gchar** const names = g_key_file_get_string_list(file.get(), kGroup, "ClosedPanels", &count, nullptr);
  if (names != nullptr) settings.closedPanels.clear();
  for (gsize i = 0; i < count; ++i) settings.closedPanels.insert(names[i]);
  g_strfreev(names);
  return settings;
}

}  // namespace

WindowSettings& WindowSettings::Instance() {
  static WindowSettings settings = Load();
  return settings;
}

void WindowSettings::Save() const {
  const KeyFile file(g_key_file_new(), &g_key_file_unref);
  g_key_file_set_integer(file.get(), kGroup, "Width", width);
  g_key_file_set_integer(file.get(), kGroup, "Height", height);
  g_key_file_set_boolean(file.get(), kGroup, "Maximized", maximized);
  g_key_file_set_boolean(file.get(), kGroup, "Dark", dark);
  g_key_file_set_boolean(file.get(), kGroup, "Grid", grid);
  g_key_file_set_boolean(file.get(), kGroup, "Snap", snap);
  g_key_file_set_boolean(file.get(), kGroup, "SnapToObjects", snapToObjects);
  g_key_file_set_boolean(file.get(), kGroup, "SnapToGuides", snapToGuides);
  g_key_file_set_boolean(file.get(), kGroup, "Snapping", snapping);
  g_key_file_set_boolean(file.get(), kGroup, "Guides", guides);
  g_key_file_set_boolean(file.get(), kGroup, "GuidesLocked", guidesLocked);
  g_key_file_set_boolean(file.get(), kGroup, "Rulers", rulers);
  std::vector<const char*> names;
  for (const std::string& name : closedPanels) names.push_back(name.c_str());
  g_key_file_set_string_list(file.get(), kGroup, "ClosedPanels", names.data(), names.size());
  GError* error = nullptr;
  g_mkdir_with_parents(Folder().c_str(), 0700);
  if (g_key_file_save_to_file(file.get(), (Folder() + "/window.ini").c_str(), &error)) return;
  static bool told = false;
  if (!told) std::fprintf(stderr, "objecthost: can't keep the window's settings: %s\n", error->message);
  told = true;
  g_clear_error(&error);
}

}  // namespace host

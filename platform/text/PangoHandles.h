// Owning handles of the objects of pango and its libraries that the native layer uses.
#pragma once

#include <glib-object.h>
#include <pango/pango.h>

#include <memory>
#include <utility>

namespace platform {

/// Holds one reference of its own to a counted object of glib's, or null.
template <typename T>
class GObjectRef {
 public:
  GObjectRef() = default;
  /// Takes over the caller's reference.
  static GObjectRef Take(T* object) {
    GObjectRef ref;
    ref.object_ = object;
    return ref;
  }
  static GObjectRef Share(T* object) {
    if (object != nullptr) g_object_ref(object);
    return Take(object);
  }
  GObjectRef(const GObjectRef& other) : object_(other.object_) {
    if (object_ != nullptr) g_object_ref(object_);
  }
  GObjectRef(GObjectRef&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  GObjectRef& operator=(GObjectRef other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~GObjectRef() {
    if (object_ != nullptr) g_object_unref(object_);
  }

  T* Get() const { return object_; }

 private:
  T* object_ = nullptr;
};

struct PangoDeleter {
  void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
  void operator()(PangoFontMetrics* metrics) const { pango_font_metrics_unref(metrics); }
  void operator()(PangoAttrList* attributes) const { pango_attr_list_unref(attributes); }
  void operator()(PangoGlyphString* glyphs) const { pango_glyph_string_free(glyphs); }
};

using PangoDescription = std::unique_ptr<PangoFontDescription, PangoDeleter>;
using PangoMetrics = std::unique_ptr<PangoFontMetrics, PangoDeleter>;
using PangoAttributes = std::unique_ptr<PangoAttrList, PangoDeleter>;
using PangoGlyphs = std::unique_ptr<PangoGlyphString, PangoDeleter>;

}  // namespace platform

#include "host/window/DesktopClipboard.h"

#include <gdkmm/clipboard.h>
#include <gdkmm/contentformats.h>
#include <giomm/error.h>
#include <giomm/inputstream.h>
#include <glibmm/bytes.h>
#include <glibmm/main.h>

#include <memory>
#include <new>
#include <string_view>

#include "host/session/SessionImport.h"

namespace host {
namespace {

constexpr char kDocumentType[] = "application/x-objecthost-document";
struct OfferedPicture {
  const char* type;
  PictureKind kind;
};
constexpr OfferedPicture kPictures[] = {
    {"image/svg+xml", PictureKind::kSVG}, {"image/png", PictureKind::kPNG}, {"application/pdf", PictureKind::kPDF}};

// The first that is there is taken.
constexpr const char* kTaken[] = {kDocumentType, "image/png", "image/jpeg", "image/tiff", "image/svg+xml"};

Problem NothingToPaste() { return Problem(N_("there is nothing on the clipboard that can be pasted")); }

// Called from the toolkit, through which nothing may be thrown.
Result<std::string> Made(const CopiedObjects& copied, std::string_view type) {
  try {
    if (type == kDocumentType) return copied.AsDocument();
    for (const OfferedPicture& picture : kPictures) {
      if (type == picture.type) return copied.AsPicture(picture.kind);
    }
  } catch (const std::bad_alloc&) {
    return Problem(N_("there is not enough memory for the picture"));
  }
  return NothingToPaste();
}

// What the toolkit asks for the kinds that are offered, and for each of them.
struct Offer {
  GdkContentProvider parent;
  CopiedObjects* copied;
};
struct OfferClass {
  GdkContentProviderClass parent;
};

extern "C" {

GdkContentFormats* RefFormats(GdkContentProvider*) {
  GdkContentFormatsBuilder* const builder = gdk_content_formats_builder_new();
  gdk_content_formats_builder_add_mime_type(builder, kDocumentType);
  for (const OfferedPicture& picture : kPictures) gdk_content_formats_builder_add_mime_type(builder, picture.type);
  return gdk_content_formats_builder_free_to_formats(builder);
}

void OnWritten(GObject* stream, GAsyncResult* result, gpointer task) {
  GError* error = nullptr;
  if (g_output_stream_write_all_finish(G_OUTPUT_STREAM(stream), result, nullptr, &error)) {
    g_task_return_boolean(G_TASK(task), TRUE);
  } else {
    g_task_return_error(G_TASK(task), error);
  }
  g_object_unref(task);
}

void Write(GdkContentProvider* provider, const char* type, GOutputStream* stream, int priority,
           GCancellable* cancellable, GAsyncReadyCallback callback, gpointer data) {
  GTask* const task = g_task_new(provider, cancellable, callback, data);
  auto made = Made(*reinterpret_cast<Offer*>(provider)->copied, type);
  if (!made) {
    g_task_return_new_error(task, G_IO_ERROR, G_IO_ERROR_FAILED, "%s", made.Why().Translated().c_str());
    g_object_unref(task);
    return;
  }
  auto* const bytes = new std::string(std::move(*made));
  g_task_set_task_data(task, bytes, [](gpointer old) { delete static_cast<std::string*>(old); });
  g_output_stream_write_all_async(stream, bytes->data(), bytes->size(), priority, cancellable, &OnWritten, task);
}

gboolean FinishWrite(GdkContentProvider*, GAsyncResult* result, GError** error) {
  return g_task_propagate_boolean(G_TASK(result), error);
}

void Finalize(GObject* object) {
  delete reinterpret_cast<Offer*>(object)->copied;
  G_OBJECT_CLASS(g_type_class_peek_parent(G_OBJECT_GET_CLASS(object)))->finalize(object);
}

void InitClass(gpointer type, gpointer) {
  auto* const provider = static_cast<GdkContentProviderClass*>(type);
  provider->ref_formats = &RefFormats;
  provider->write_mime_type_async = &Write;
  provider->write_mime_type_finish = &FinishWrite;
  G_OBJECT_CLASS(type)->finalize = &Finalize;
}

}  // extern "C"

GType OfferType() {
  static const GType type =
      g_type_register_static_simple(GDK_TYPE_CONTENT_PROVIDER, "ObjecthostOffer", sizeof(OfferClass), &InitClass,
                                    sizeof(Offer), nullptr, G_TYPE_FLAG_FINAL);
  return type;
}

// What this program offers itself; null when another one does.
const CopiedObjects* OwnOffer(Gdk::Clipboard& clipboard) {
  GdkContentProvider* const content = gdk_clipboard_get_content(clipboard.gobj());
  if (content == nullptr || !G_TYPE_CHECK_INSTANCE_TYPE(content, OfferType())) return nullptr;
  return reinterpret_cast<Offer*>(content)->copied;
}

// Reads what another program gives, piece by piece, no more than what may be imported.
class Reading : public std::enable_shared_from_this<Reading> {
 public:
  explicit Reading(std::function<void(const Result<ClipboardContent>&)> then) : then_(std::move(then)) {}

  void Begin(const Glib::RefPtr<Gdk::Clipboard>& clipboard, const char* type) {
    clipboard->read_async({type}, G_PRIORITY_DEFAULT,
                          [self = shared_from_this(), clipboard](const Glib::RefPtr<Gio::AsyncResult>& result) {
                            self->Try([&] {
                              self->stream_ = clipboard->read_finish(result, self->type_);
                              self->Next();
                            });
                          });
  }

 private:
  template <typename Step>
  void Try(Step step) {
    try {
      step();
    } catch (const Glib::Error& error) {
      then_(Problem(N_("the clipboard can't be read: %s"), {std::string(error.what())}));
    }
  }

  void Next() {
    constexpr gsize kPiece = 1 << 18;
    stream_->read_bytes_async(kPiece, [self = shared_from_this()](const Glib::RefPtr<Gio::AsyncResult>& result) {
      self->Try([&] { self->Take(self->stream_->read_bytes_finish(result)); });
    });
  }

  void Take(const Glib::RefPtr<Glib::Bytes>& piece) {
    gsize size = 0;
    const auto* const data = static_cast<const char*>(piece->get_data(size));
    if (size == 0) return Finish();
    bytes_.append(data, size);
    if (bytes_.size() <= SessionImport::kMostBytes) return Next();
    then_(
        Problem(N_("what is on the clipboard has more than %s MB"), {std::to_string(SessionImport::kMostBytes >> 20)}));
  }

  void Finish() {
    if (type_ != kDocumentType) return then_(ClipboardContent{false, std::move(bytes_)});
    auto objects = CopiedFromDocument(bytes_);
    if (!objects) return then_(objects.Why());
    then_(ClipboardContent{true, std::move(*objects)});
  }

  std::function<void(const Result<ClipboardContent>&)> then_;
  Glib::RefPtr<Gio::InputStream> stream_;
  Glib::ustring type_;
  std::string bytes_;
};

// What kinds another program offers is known some moments after it took the clipboard.
void Read(const Glib::RefPtr<Gdk::Clipboard>& clipboard,
          const std::function<void(const Result<ClipboardContent>&)>& then, int tries) {
  constexpr unsigned int kPause = 100;  // milliseconds
  if (const CopiedObjects* const own = OwnOffer(*clipboard.get())) return then(ClipboardContent{true, own->Bytes()});
  const auto formats = clipboard->get_formats();
  for (const char* type : kTaken) {
    if (formats->contain_mime_type(type)) return std::make_shared<Reading>(then)->Begin(clipboard, type);
  }
  if (!formats->get_mime_types().empty()) return then(NothingToPaste());
  if (tries == 0) return;
  Glib::signal_timeout().connect_once([clipboard, then, tries] { Read(clipboard, then, tries - 1); }, kPause);
}

}  // namespace

void OfferOnClipboard(Gtk::Widget& widget, CopiedObjects copied) {
  auto* const offer = static_cast<Offer*>(g_object_new(OfferType(), nullptr));
  offer->copied = new CopiedObjects(std::move(copied));
  gdk_clipboard_set_content(widget.get_clipboard()->gobj(), &offer->parent);
  g_object_unref(offer);
}

void ReadClipboard(Gtk::Widget& widget, const std::function<void(const Result<ClipboardContent>&)>& then) {
  constexpr int kTries = 20;
  Read(widget.get_clipboard(), then, kTries);
}

}  // namespace host

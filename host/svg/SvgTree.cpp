#include "host/svg/SvgTree.h"

#include <glib.h>

#include <algorithm>
#include <cstring>

#include "host/svg/SvgValues.h"
#include "host/text/Localisation.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

constexpr std::size_t kDeepest = 256;
constexpr std::size_t kMostElements = 1000000;

class TreeReader {
 public:
  Result<SvgTree> Read(const std::string& text);

 private:
  static void OnStart(GMarkupParseContext* context, const char* name, const char** names, const char** values,
                      void* self, GError** error);
  static void OnEnd(GMarkupParseContext*, const char*, void* self, GError**) {
    static_cast<TreeReader*>(self)->open_.pop_back();
  }
  static void OnText(GMarkupParseContext*, const char* text, gsize length, void* self, GError**);
  static void OnOther(GMarkupParseContext*, const char* text, gsize length, void* self, GError** error);

  bool Start(std::string_view name, const char** names, const char** values);

  SvgTree tree_;
  std::vector<SvgElement*> open_;
  std::size_t count_ = 0;
  std::optional<Text> why_;
};

void TreeReader::OnStart(GMarkupParseContext*, const char* name, const char** names, const char** values, void* self,
                         GError** error) {
  const char* const colon = std::strrchr(name, ':');
  if (static_cast<TreeReader*>(self)->Start(colon == nullptr ? name : colon + 1, names, values)) return;
  g_set_error_literal(error, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, "refused");
}

bool TreeReader::Start(std::string_view name, const char** names, const char** values) {
  if (open_.empty() && name != "svg") why_ = N_("it is no SVG picture");
  if (open_.size() >= kDeepest) why_ = N_("its elements lie more than 256 deep in each other");
  if (++count_ > kMostElements) why_ = N_("it has more than a million elements");
  if (why_) return false;
  auto element = std::make_unique<SvgElement>();
  element->name = name;
  for (std::size_t i = 0; names[i] != nullptr; ++i) element->attributes.emplace_back(names[i], values[i]);
  SvgElement* const made = element.get();
  (open_.empty() ? tree_.root : open_.back()->children.emplace_back()) = std::move(element);
  if (!made->Get("id").empty()) tree_.byID.try_emplace(made->Get("id"), made);
  open_.push_back(made);
  return true;
}

void TreeReader::OnText(GMarkupParseContext*, const char* text, gsize length, void* self, GError**) {
  auto* const reader = static_cast<TreeReader*>(self);
  if (!reader->open_.empty() && reader->open_.back()->name == "style") reader->tree_.styles.append(text, length);
}

// Comments, declarations and types of documents; one with entities in it would be read wrong without them.
void TreeReader::OnOther(GMarkupParseContext*, const char* text, gsize length, void* self, GError** error) {
  if (std::string_view(text, length).find("<!ENTITY") == std::string_view::npos) return;
  static_cast<TreeReader*>(self)->why_ = N_("the picture has entities of its own, which are not taken");
  g_set_error_literal(error, G_MARKUP_ERROR, G_MARKUP_ERROR_INVALID_CONTENT, "entities");
}

Result<SvgTree> TreeReader::Read(const std::string& text) {
  constexpr std::string_view kByteOrder = "\xEF\xBB\xBF";
  std::string_view body = text;
  if (body.starts_with(kByteOrder)) body.remove_prefix(kByteOrder.size());
  // In comments and declarations the parser would tell of it, go on, and perhaps fail once more.
  if (const std::size_t good = std::min(FindInvalidUtf8(body), body.find('\0')); good < body.size()) {
    return Problem(N_("it is no XML in UTF-8: %s"), {"byte " + std::to_string(good)});
  }
  const GMarkupParser parser{&OnStart, &OnEnd, &OnText, &OnOther, nullptr};
  GMarkupParseContext* const context = g_markup_parse_context_new(&parser, G_MARKUP_TREAT_CDATA_AS_TEXT, this, nullptr);
  GError* error = nullptr;
  const bool isWhole = g_markup_parse_context_parse(context, body.data(), static_cast<gssize>(body.size()), &error) &&
                       g_markup_parse_context_end_parse(context, &error);
  g_markup_parse_context_free(context);
  const std::string said = error == nullptr ? "" : error->message;
  g_clear_error(&error);
  if (why_) return Problem(*why_);
  if (!isWhole || !tree_.root) return Problem(N_("it is no XML in UTF-8: %s"), {said});
  return std::move(tree_);
}

}  // namespace

std::string_view SvgElement::Get(std::string_view attribute) const {
  for (const auto& [key, value] : attributes) {
    if (key == attribute) return SvgTrimmed(value);
  }
  return {};
}

const SvgElement* SvgTree::Find(std::string_view reference) const {
  if (reference.starts_with("url(") && reference.ends_with(')')) reference = reference.substr(4, reference.size() - 5);
  reference = SvgTrimmed(reference);
  if (reference.size() > 2 && (reference[0] == '"' || reference[0] == '\'')) {
    reference = reference.substr(1, reference.size() - 2);
  }
  if (!reference.starts_with('#')) return nullptr;
  const auto found = byID.find(reference.substr(1));
  return found == byID.end() ? nullptr : found->second;
}

Result<SvgTree> ReadSvgTree(const std::string& text) { return TreeReader().Read(text); }

}  // namespace host

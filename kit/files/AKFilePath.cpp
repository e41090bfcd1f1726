#include "kit/files/AKFilePath.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "kit/files/AKPathText_p.h"

const AKFilePath kAKNullFilePath;

namespace {

constexpr std::string_view::size_type kNone = std::string_view::npos;

std::string_view ViewOf(const AKString& text) { return {text.CStr(), text.Length()}; }

AKString StringOf(std::string_view text) { return {text.data(), static_cast<unsigned int>(text.size())}; }

// Where the file name begins: 0 without a separator.
std::size_t FileNameStart(std::string_view text) { return text.rfind('/') + 1; }

std::string_view FileNameOf(std::string_view text) { return text.substr(FileNameStart(text)); }

// The length of a file name without its extension.
std::size_t StemLength(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  return dot == kNone || dot == 0 || name == ".." ? name.size() : dot;
}

// The extension of a name in its text: behind the signature of the whole name it needs one of its own.
AKString ExtensionOf(std::string_view name) {
  const std::string_view stem = name.substr(0, StemLength(name));
  const std::string_view extension = name.substr(stem.size());
  const AKString whole = akpath::ToSystem(name);
  const std::string_view bytes = ViewOf(whole).substr(akpath::ToSystem(stem).Length());
  if (ViewOf(akpath::ToSystem(extension)) == bytes) return StringOf(extension);
  return "." + akpath::FromSystem(bytes.substr(1));
}

// Two parts of a name as one, each converted by itself: bytes behind a signature are no Mac OS Roman.
AKString JoinedName(std::string_view stem, std::string_view rest) {
  return akpath::FromSystem(ViewOf(akpath::ToSystem(stem) + akpath::ToSystem(rest)));
}

char LowerAscii(char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte; }

bool IsEqualButForCase(std::string_view first, std::string_view second) {
  return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                    [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
}

// Walks the components of a path without copying them.
class ComponentReader {
 public:
  explicit ComponentReader(std::string_view text) : text_(text) {}

  bool Next(std::string_view* component) {
    if (position_ == 0 && !text_.empty() && text_[0] == '/') {
      SkipSeparators();
      *component = text_.substr(0, 1);
      endsWithName_ = false;
      return true;
    }
    if (position_ < text_.size()) {
      const std::size_t end = std::min(text_.find('/', position_), text_.size());
      *component = text_.substr(position_, end - position_);
      position_ = end;
      endsWithName_ = position_ < text_.size();
      SkipSeparators();
      return true;
    }
    *component = {};
    return std::exchange(endsWithName_, false);  // one empty component after "name/"
  }

 private:
  void SkipSeparators() {
    while (position_ < text_.size() && text_[position_] == '/') ++position_;
  }

  std::string_view text_;
  std::size_t position_ = 0;
  bool endsWithName_ = false;  // a separator followed the last name
};

std::vector<std::string_view> ComponentsOf(std::string_view text) {
  std::vector<std::string_view> components;
  ComponentReader reader(text);
  for (std::string_view component; reader.Next(&component);) components.push_back(component);
  return components;
}

bool IsDotDot(std::string_view name) { return name == ".."; }
bool IsDotOrNothing(std::string_view name) { return name.empty() || name == "."; }

// What is left of names after "." and "..", and whether the text ended as a folder does.
struct SimplifiedNames {
  std::vector<std::string_view> names;
  bool endsAsFolder = false;
};

SimplifiedNames SimplifyNames(const std::vector<std::string_view>& components, bool absolute) {
  SimplifiedNames result;
  for (std::size_t i = absolute ? 1 : 0; i < components.size(); ++i) {
    const std::string_view name = components[i];
    result.endsAsFolder = IsDotOrNothing(name) || IsDotDot(name);
    if (IsDotOrNothing(name)) continue;
    const bool climbs = !result.names.empty() && !IsDotDot(result.names.back());
    if (IsDotDot(name) && climbs) {
      result.names.pop_back();
    } else if (!IsDotDot(name) || !absolute) {
      result.names.push_back(name);
    }
  }
  return result;
}

void AppendName(AKString* text, std::string_view name) {
  if (!text->IsEmpty() && (*text)[text->Length() - 1] != '/') text->Append('/');
  text->Append(name.data(), static_cast<unsigned int>(name.size()));
}

}  // namespace

AKFilePath AKFilePath::Folder() const {
  const std::string_view text = ViewOf(text_);
  std::size_t end = FileNameStart(text);
  while (end > 1 && text[end - 1] == '/') --end;
  return AKFilePath(StringOf(text.substr(0, end)));
}

void AKFilePath::SetPath(const AKString& folder) {
  const AKString name = FileName();
  AKString text = folder;
  if (!text.IsEmpty() && text[text.Length() - 1] != '/') text.Append('/');
  text_ = text.Append(name);
}

AKString AKFilePath::FileName() const { return StringOf(FileNameOf(ViewOf(text_))); }

void AKFilePath::SetFileName(const AKString& name) {
  AKString text = StringOf(ViewOf(text_).substr(0, FileNameStart(ViewOf(text_))));
  text_ = text.Append(name);
}

AKString AKFilePath::FileNameWithoutExtension() const {
  const std::string_view name = FileNameOf(ViewOf(text_));
  return akpath::Canonical(name.substr(0, StemLength(name)));
}

AKString AKFilePath::Extension() const { return ExtensionOf(FileNameOf(ViewOf(text_))); }

bool AKFilePath::HasExtension(const AKString& extension) const {
  const AKString own = Extension();
  if (own.IsEmpty() || extension.IsEmpty()) return own.IsEmpty() && extension.IsEmpty();
  return IsEqualButForCase(ViewOf(own).substr(1), ViewOf(extension).substr(extension[0] == '.' ? 1 : 0));
}

void AKFilePath::SetExtension(const AKString& extension) {
  const std::string_view text = ViewOf(text_);
  const std::size_t start = FileNameStart(text);
  const std::string_view name = text.substr(start);
  const AKString dotted = extension.IsEmpty() || extension[0] == '.' ? extension : "." + extension;
  AKString result = StringOf(text.substr(0, start));
  text_ = result.Append(JoinedName(name.substr(0, StemLength(name)), ViewOf(dotted)));
}

AKStringArray AKFilePath::Components() const {
  AKStringArray result;
  ComponentReader reader(ViewOf(text_));
  for (std::string_view component; reader.Next(&component);) result.Append(StringOf(component));
  return result;
}

AKFilePath& AKFilePath::Append(const AKFilePath& other) {
  if (other.IsAbsolute()) {
    text_ = other.text_;
    return *this;
  }
  const AKString added = other.text_;  // `other` may be this path
  if (!text_.IsEmpty() && text_[text_.Length() - 1] != '/') text_.Append('/');
  text_.Append(added);
  return *this;
}

void AKFilePath::Simplify() {
  if (IsEmpty()) return;
  const SimplifiedNames simplified = SimplifyNames(ComponentsOf(ViewOf(text_)), IsAbsolute());
  AKString result(IsAbsolute() ? "/" : "");
  for (const std::string_view name : simplified.names) AppendName(&result, name);
  if (result.IsEmpty()) {
    result.Append('.');
  } else if (simplified.endsAsFolder && !simplified.names.empty() && !IsDotDot(simplified.names.back())) {
    result.Append('/');
  }
  text_ = result;
}

AKFilePath AKFilePath::RelativeTo(const AKFilePath& base) const {
  if (IsAbsolute() != base.IsAbsolute()) return {};
  const std::vector<std::string_view> own = ComponentsOf(ViewOf(text_));
  const std::vector<std::string_view> from = ComponentsOf(ViewOf(base.text_));
  std::size_t common = 0;
  while (common < own.size() && common < from.size() && own[common] == from[common]) ++common;
  if (common == own.size() && common == from.size()) return AKFilePath(".");
  int climbs = 0;
  for (std::size_t i = common; i < from.size(); ++i) {
    if (!IsDotOrNothing(from[i])) climbs += IsDotDot(from[i]) ? -1 : 1;
  }
  if (climbs < 0) return {};
  if (climbs == 0 && (common == own.size() || own[common].empty())) return AKFilePath(".");
  AKString result;
  for (int i = 0; i < climbs; ++i) AppendName(&result, "..");
  for (std::size_t i = common; i < own.size(); ++i) AppendName(&result, own[i]);
  return AKFilePath(result);
}

AKFilePath AKFilePath::AbsoluteFrom(const AKFilePath& base) const {
  AKFilePath result = base;
  result.Append(*this);
  result.Simplify();
  return result;
}

std::strong_ordering AKFilePath::operator<=>(const AKFilePath& other) const {
  if (IsAbsolute() != other.IsAbsolute()) return IsAbsolute() <=> other.IsAbsolute();
  ComponentReader own(ViewOf(text_));
  ComponentReader others(ViewOf(other.text_));
  std::string_view first;
  std::string_view second;
  for (;;) {
    const bool hasFirst = own.Next(&first);
    const bool hasSecond = others.Next(&second);
    if (!hasFirst || !hasSecond) return hasFirst <=> hasSecond;
    if (const int order = first.compare(second); order != 0) {
      return order < 0 ? std::strong_ordering::less : std::strong_ordering::greater;
    }
  }
}

AKFilePath operator/(const AKFilePath& folder, const AKFilePath& entry) {
  AKFilePath result = folder;
  return result.Append(entry);
}

// AKFilePath: the path of a file or folder, a value.
//
// A path is a text in the kit's in-memory character set with "/" between its components; it owns nothing of the disk
// and no function here touches the disk. Nothing is normalised on the way in: the text is kept as given. A path splits
// into a folder part (all up to the last "/") and a file-name part (all after it); a path that ends with "/" names a
// folder and has an empty file name. Indexes and counts are 32-bit unsigned. Wrong arguments give the empty path or
// text.
//
// A component that Mac OS Roman cannot hold, "日本" or one that is no UTF-8, is the UTF-8 signature (bytes EF BB BF)
// and the system's bytes of the name behind it, so that a path can stand for every file. Parts of such a name that are
// handed out are in the same form.
#pragma once

#include <compare>

#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"

class AKValue;

class AKFilePath {
 public:
  /// The empty path.
  AKFilePath() = default;
  ///@{
  /// The path of a text, kept as given; null gives the empty path.
  explicit AKFilePath(const AKString& text) : text_(text) {}
  explicit AKFilePath(const char* text) : text_(text) {}
  ///@}

  ///@{
  /// The whole path as text.
  const AKString& Text() const { return text_; }
  void SetText(const AKString& text) { text_ = text; }
  ///@}

  /// True for a text without a byte.
  bool IsEmpty() const { return text_.IsEmpty(); }
  /// The empty path again.
  void Clear() { text_.Free(); }
  ///@{
  /// Whether the path begins at the root ("/"). The empty path is relative.
  bool IsAbsolute() const { return text_[0] == '/'; }
  bool IsRelative() const { return !IsAbsolute(); }
  ///@}

  /// The folder part without its last separator ("/" for an entry of the root); empty when there is none.
  AKFilePath Folder() const;
  /// Replaces the folder part by `folder`, which is a folder with or without a "/" at its end, and keeps the file name:
  /// an empty path becomes "folder/". An empty `folder` leaves the file name alone.
  void SetPath(const AKString& folder);

  /// The text after the last separator: empty for "a/", "." for "a/.".
  AKString FileName() const;
  /// Replaces the text after the last separator.
  void SetFileName(const AKString& name);
  /// The file name up to its last dot. A leading dot begins no extension, and "." and ".." have none.
  AKString FileNameWithoutExtension() const;
  /// The last dot of the file name and what follows it; empty when there is no such dot.
  AKString Extension() const;
  /// True when the file name's extension is `extension`, given with or without its dot, in any case of ASCII letters,
  /// whatever the locale.
  bool HasExtension(const AKString& extension) const;
  /// Replaces the extension, adding the dot if `extension` lacks it; an empty one removes the extension.
  void SetExtension(const AKString& extension);
  /// The file name up to its last dot stays.
  void RemoveExtension() { SetExtension(kAKNullString); }

  /// The components in order: "/" first for an absolute path, then the names, then an empty one for a path that ends
  /// with a separator after a name. Repeated separators count as one.
  AKStringArray Components() const;

  /// Joins: an absolute `other` replaces this path, any other is added after a separator if one is missing.
  AKFilePath& Append(const AKFilePath& other);

  /// Resolves "." and ".." and repeated separators by the text alone: a link before ".." is not followed. ".." above
  /// the root is dropped, above a relative path kept; what becomes nothing is ".".
  void Simplify();
  /// This path as seen from the folder `base`, by the text alone: empty when only one of the two is absolute or when
  /// `base` climbs above its own start.
  AKFilePath RelativeTo(const AKFilePath& base) const;
  /// The simplified join of `base` and this path.
  AKFilePath AbsoluteFrom(const AKFilePath& base) const;

  /// By components, in their order: "a//b" equals "a/b" but "a/" differs from "a".
  std::strong_ordering operator<=>(const AKFilePath& other) const;
  /// As the order has it.
  bool operator==(const AKFilePath& other) const { return std::is_eq(*this <=> other); }

  /// The value form of a path: a "strg" of its text.
  void WriteToValue(AKValue* value) const;
  /// False, with the path left alone, when the value is no string.
  bool ReadFromValue(const AKValue& value);

 private:
  friend struct AKLayout;

  AKString text_;
};

/// The join of a folder and an entry, as Append makes it.
AKFilePath operator/(const AKFilePath& folder, const AKFilePath& entry);

/// The empty path. It is known by its content, not by its address.
extern const AKFilePath kAKNullFilePath;

// What was copied, in the kinds that other programs take, each made when one asks.
#pragma once

#include <string>

#include "host/pictures/DocumentPicture.h"
#include "host/session/DocumentSession.h"

namespace host {

class CopiedObjects {
 public:
  CopiedObjects() = default;
  /// `bytes` are those of SessionClipboard::Copy, from a document.
  CopiedObjects(std::string bytes, const Document& from)
      : bytes_(std::move(bytes)), page_(from.Page()), background_(from.Background()) {}

  bool IsEmpty() const { return bytes_.empty(); }
  const std::string& Bytes() const { return bytes_; }

  /// A document file: the objects where they were, on one layer of a page of the same size and colour.
  Result<std::string> AsDocument() const;
  /// PNG, PDF or SVG, as large as what the objects paint, without a background.
  Result<std::string> AsPicture(PictureKind kind) const;

 private:
  Result<std::unique_ptr<DocumentSession>> Open() const;

  std::string bytes_;
  AGSize page_{1, 1};
  AGColor background_ = kAGColorWhite;
};

/// All objects of a document file in memory as SessionClipboard::Paste takes them, but for those that are hidden or
/// locked, as their layers may be. Fails where there are none.
Result<std::string> CopiedFromDocument(const std::string& file);

}  // namespace host

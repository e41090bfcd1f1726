// The document of the reference host: a page, and objects in drawing order.
//
// An object has a place, a brush and a pen, which the host keeps, and an instance of a class, which keeps the rest.
// Where no loaded bundle has the class, the object is a placeholder: it keeps its place in the order and the bytes that
// were read, which are written back unchanged. Coordinates are map units, one a pixel at scale 1; y points up.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "graphics/AGBrushAndPen.h"
#include "graphics/values/AGRect.h"
#include "graphics/values/AGSize.h"
#include "host/bundles/Instance.h"
#include "kit/AKMemoryBlock.h"

namespace host {

struct DocumentObject {
  AKClassID classID;
  AGRect bounds{0, 0, 100, 100};
  double angle = 0;  ///< radians, about the centre of the bounds
  AGBrush brush;
  AGPen pen;
  Instance instance;  ///< null for a placeholder
  /// A placeholder's body as it was read.
  AKMemoryBlock unknownBody;

  bool IsPlaceholder() const { return instance == nullptr; }
};

class Document {
 public:
  explicit Document(AGSize const& page) : page_(page) {}
  Document(Document const&) = delete;
  Document& operator=(Document const&) = delete;
  ~Document();

  /// The document that handlers of plug-ins act on: the one made current last; null when there is none.
  static Document* Current();
  void MakeCurrent();

  AGSize const& Page() const { return page_; }
  AGColor Background() const { return background_; }
  void SetBackground(AGColor color) { background_ = color; }

  std::vector<DocumentObject>& Objects() { return objects_; }
  std::vector<DocumentObject> const& Objects() const { return objects_; }

  /// Adds an object of a class at the end of the order, initialised from argument text such as "-default". Null when
  /// the class is unknown or refuses, with the reason in `*error`.
  DocumentObject* Add(AKClassID classID, std::string const& arguments, std::string* error);

  /// Takes over an instance.
  void Adopt(AKObject* object);
  /// Deletes the object with that instance; false when there is none.
  bool Remove(AKObject const* object);
  bool Contains(AKObject const* object) const;

 private:
  AGSize page_;
  AGColor background_ = kAGColorWhite;
  std::vector<DocumentObject> objects_;
};

}  // namespace host

#include "host/document/Document.h"

#include <algorithm>
#include <cstdarg>

#include "host/QuietLog.h"

namespace host {
namespace {

Document* sCurrent = nullptr;

AKObject* NewObject(AKClassID classID, char const* format, ...) {
  va_list list;
  va_start(list, format);
  AKObject* object = AKClass::NewObjectWithArgs(nullptr, classID, format, list);
  va_end(list);
  return object;
}

DocumentObject WithDefaults(AKClassID classID, Instance instance) {
  DocumentObject object;
  object.classID = classID;
  object.brush.SetStyleSolid(AGColor(70, 130, 180));
  object.pen.SetStyleSolid(kAGColorBlack, 1.0, kAGPenSizeModeAbsolute);
  object.instance = std::move(instance);
  return object;
}

}  // namespace

Document::~Document() {
  if (sCurrent == this) sCurrent = nullptr;
}

Document* Document::Current() { return sCurrent; }
void Document::MakeCurrent() { sCurrent = this; }

DocumentObject* Document::Add(AKClassID classID, std::string const& arguments, std::string* error) {
  const QuietLog quiet;
  Instance instance(NewObject(classID, "%s", arguments.c_str()));
  if (!instance) {
    *error = std::string("can't make an object of class \"") + classID.chars + "\" (status " +
             std::to_string(AKClass::GetErrorNew()) + ")";
    return nullptr;
  }
  objects_.push_back(WithDefaults(classID, std::move(instance)));
  return &objects_.back();
}

void Document::Adopt(AKObject* object) { objects_.push_back(WithDefaults(object->ClassID(), Instance(object))); }

bool Document::Remove(AKObject const* object) {
  const auto found = std::find_if(objects_.begin(), objects_.end(),
                                  [object](DocumentObject const& entry) { return entry.instance.get() == object; });
  if (object == nullptr || found == objects_.end()) return false;
  objects_.erase(found);
  return true;
}

bool Document::Contains(AKObject const* object) const {
  return object != nullptr && std::any_of(objects_.begin(), objects_.end(), [object](DocumentObject const& entry) {
           return entry.instance.get() == object;
         });
}

}  // namespace host

// The properties of a document's object as one dictionary, and as text.
//
// "Bounds" (dictionary x1, y1, x2, y2), "Angle" (degrees), "Brush" and "Pen" are the host's; the others come from the
// object's class ("Rounding" of a rectangle). A key path such as "Pen.Brush.Color" addresses a part.
#pragma once

#include <optional>
#include <string>

#include "host/model/DocumentObject.h"
#include "host/text/Problem.h"
#include "kit/values/AKDictionary.h"

namespace host {

/// Everything that the object has; a placeholder has only what the host keeps.
AKDictionary PropertiesOf(const DocumentObject& object);

/// What its class gives; nothing for a placeholder.
AKDictionary ClassProperties(const DocumentObject& object);

/// The name that users see of a class; its ID when no bundle has it.
std::string ClassName(AKClassID classID);

/// What the host keeps of an object and users may set.
struct HostFields {
  ObjectPlacement placement;
  AGBrush brush;
  AGPen pen;
};

/// Sets the property at a key path from text, which must suit the kind of value that stands there: a number, a word, a
/// colour as "(r;g;b;a)", bounds as "(x0;y0;x1;y1)"; a length such as "5mm" for a part of one (LengthOfOne). Values
/// out of range are taken as the object takes them (clamped, as a rule). What is the host's is set in `*fields`, what
/// is the class's in the object's instance. Fails when there is no such property or the text does not suit it.
Result<> SetProperty(const DocumentObject& object, HostFields* fields, const std::string& path,
                     const std::string& text);

/// Gives the instance of an object, which is no placeholder, properties of its class. 0, or what the class returned; a
/// class that takes none returns -1.
int SetClassProperties(const DocumentObject& object, const AKDictionary& properties);
/// The length, map units, of which a property of a class is a part, so that users can give it as a length, too: of
/// "Rounding" half the shorter side, the largest radius. None for other properties, and where the length is 0.
std::optional<double> LengthOfOne(const ObjectPlacement& placement, const std::string& property);

/// A value as text: numbers as short as they can be to read back the same, dictionaries in braces.
std::string TextOf(const AKValue& value);

}  // namespace host

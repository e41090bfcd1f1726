// Edits of the objects of a session: coming, going, placement, style and properties.
//
// Edits of placement, style and properties pass over placeholders, and are refused when there are only placeholders.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "host/session/SessionSteps.h"
#include "host/session/StyleFields.h"

namespace host {

class SessionObjects {
 public:
  SessionObjects(Document& document, SessionSteps& steps, SessionSelection& selection, ActiveLayer& activeLayer)
      : document_(document), steps_(steps), selection_(selection), activeLayer_(activeLayer) {}

  /// A new object of a class, in front on the active layer, and selected.
  Result<ObjectID> Add(AKClassID classID, const std::string& arguments, const ObjectPlacement& placement);
  Result<> Delete(const ObjectIDs& ids);
  Result<> SetPlacement(ObjectID id, const ObjectPlacement& placement);
  Result<> SetAngle(const ObjectIDs& ids, double angle);
  Result<> Move(const ObjectIDs& ids, double dx, double dy);
  /// What a user did last of moving, stretching and turning one or several things, done to others: by the same way, by
  /// the same factors from the same side, by the same angle about their own middle. Fails when there was nothing yet.
  Result<> Repeat(const ObjectIDs& ids);

  // The same as parts of something else, which are not repeated: SetPlacement, Resize and Move.

  Result<> Place(ObjectID id, const ObjectPlacement& placement);
  Result<> Stretched(const ObjectIDs& ids, const AGRect& from, const AGRect& to);
  Result<> Shift(const ObjectIDs& ids, double dx, double dy);

  /// Stretches the objects as the box `from` is to `to`. A turned object is moved with its centre and stretched along
  /// its own sides. Refused when `from` has no area.
  Result<> Resize(const ObjectIDs& ids, const AGRect& from, const AGRect& to);
  /// Turns the objects together about a point.
  Result<> Rotate(const ObjectIDs& ids, double angle, const AGPoint& about);
  /// Turns them about the centre of their box.
  Result<> Rotate(const ObjectIDs& ids, double angle);
  Result<> SetBrush(const ObjectIDs& ids, const AGBrush& brush);
  Result<> SetPen(const ObjectIDs& ids, const AGPen& pen);
  /// Brush, pen, opacity and dashes at once, as one change; what differs among those that they come of does not count.
  Result<> SetStyle(const ObjectIDs& ids, const SharedStyle& style);
  /// One field alone becomes that of `brush` or `pen`; the others stay what they are, each object's own.
  Result<> SetBrushField(const ObjectIDs& ids, BrushField field, const AGBrush& brush);
  Result<> SetPenField(const ObjectIDs& ids, PenField field, const AGPen& pen);
  /// The field of the brush that the pen draws with.
  Result<> SetPenBrushField(const ObjectIDs& ids, BrushField field, const AGBrush& brush);
  /// Properties as pairs of a key path and a text; see ObjectProperties.h. All of them or none.
  Result<> SetProperties(const ObjectIDs& ids, const std::vector<std::pair<std::string, std::string>>& assignments);

  // What plug-ins do.

  ObjectID Adopt(AKObject* instance, const ObjectPlace& place);
  void DeleteAny(const ObjectIDs& ids);
  /// Looks whether the objects' instances changed by themselves; changes become part of the open step, or one.
  Result<> NoticeChanges(const ObjectIDs& ids);

 private:
  // How a box became another one, as parts of its sides, and by how much it was turned.
  struct Transform {
    double dx = 0, dy = 0;                            // of all of it
    double left = 0, bottom = 0, right = 0, top = 0;  // of its sides, in widths and heights
    double angle = 0;
  };
  static Transform TransformOf(const AGRect& from, const AGRect& to);
  Result<> Remember(const Transform& transform, Result<> done);

  template <typename Place>
  Result<> PlaceEach(const ObjectIDs& ids, const char* name, Place place);
  template <typename Restyle>
  Result<> StyleEach(const ObjectIDs& ids, const char* name, Restyle restyle);

  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
  ActiveLayer& activeLayer_;
  std::optional<Transform> last_;
};

}  // namespace host

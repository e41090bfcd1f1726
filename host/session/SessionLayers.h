// Edits of the layers of a session. Locked ones can be edited as layers.
#pragma once

#include <string>

#include "host/session/SessionSteps.h"

namespace host {

class SessionLayers {
 public:
  SessionLayers(Document& document, SessionSteps& steps, ActiveLayer& activeLayer)
      : document_(document), steps_(steps), activeLayer_(activeLayer) {}

  /// The layer that gets new objects.
  LayerID Active() const { return activeLayer_.Get(); }
  void SetActive(LayerID id) { activeLayer_.Set(id); }
  /// Above all others unless an index is given; it becomes active. A name that is empty or no UTF-8 becomes
  /// "Layer N".
  LayerID Add(const std::string& name, std::size_t index = static_cast<std::size_t>(-1));
  /// With its objects. The only layer can't be removed.
  Result<> Remove(LayerID id);
  Result<> SetName(LayerID id, const std::string& name);
  Result<> SetVisible(LayerID id, bool visible);
  Result<> SetLocked(LayerID id, bool locked);
  Result<> Move(LayerID id, std::size_t index);
  Result<> MoveObjects(const ObjectIDs& ids, LayerID layer);

 private:
  void LeaveGroups(ObjectID id, std::size_t count);
  Result<> ChangeSettings(LayerID id, const char* name, LayerSettings settings);

  Document& document_;
  SessionSteps& steps_;
  ActiveLayer& activeLayer_;
};

}  // namespace host

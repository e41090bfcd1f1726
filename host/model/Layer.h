// A layer of a document: a name, whether it is seen and can be edited, and objects in drawing order.
#pragma once

#include <string>

#include "host/model/LayerObject.h"
#include "host/model/ObjectOrder.h"

namespace host {

struct LayerSettings {
  std::string name;  ///< UTF-8
  bool visible = true;
  bool locked = false;

  bool operator==(const LayerSettings&) const = default;
};

struct Layer {
  LayerID id = kNoLayerID;
  LayerSettings settings;
  ObjectOrder objects;
  std::size_t place = 0;  ///< among the layers, when it was last looked for
  Instance standIn;       ///< a LayerObject, made when somebody asks for it

  /// Objects of a hidden or locked layer can't be selected or edited by users.
  bool IsEditable() const { return settings.visible && !settings.locked; }
};

}  // namespace host

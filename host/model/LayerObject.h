// What stands for a layer where plug-ins deal in objects: the master layer that a handler names, and the parent of
// objects that are added.
//
// Its class "_layer" is the host's own, has no methods and no constructor: nobody else can make one. The object belongs
// to the layer.
#pragma once

#include <cstdint>

#include "host/bundles/Instance.h"

namespace host {

using LayerID = std::uint64_t;
inline constexpr LayerID kNoLayerID = 0;

class LayerObject final : public AKObject {
 public:
  AK_OBJECT_MEMORY

  static AKClassID ClassOfLayers();
  static void Destruct(AKObject* object);
  /// Null when there is no memory.
  static Instance Make(LayerID layer);
  /// The layer that the object stands for; kNoLayerID for null and for an object of another class.
  static LayerID LayerOf(const AKObject* object);

  void _PureVirtualMethod() const override {}

 private:
  explicit LayerObject(LayerID layer) : layer_(layer) {}

  LayerID layer_;
};

}  // namespace host

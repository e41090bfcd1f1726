// The layers of a document in drawing order, the hindmost first, found by their IDs.
//
// A document may have 100,000 layers: none of the look-ups walks through them, and neither does counting the objects of
// those below one. A layer tells where it was seen last, and is searched from there. The counts lie in a tree of
// partial sums (a Fenwick tree), which is made anew at the first question after a layer came, went or moved anywhere
// but at the end.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "host/model/Layer.h"

namespace host {

class LayerList {
 public:
  const std::vector<Layer*>& All() const { return layers_; }
  std::size_t Count() const { return layers_.size(); }

  Layer* Find(LayerID id) const;          ///< null for an unknown ID
  std::size_t IndexOf(LayerID id) const;  ///< Count() for an unknown ID
  /// The layer has an ID that is not there. An index beyond the end means the end.
  void Insert(std::unique_ptr<Layer> layer, std::size_t index);
  /// Takes out the layer of an ID that is there.
  std::unique_ptr<Layer> Take(LayerID id);

  /// To be told whenever objects came to a layer (or, with a negative number, went).
  void CountObjects(const Layer& layer, std::ptrdiff_t more);
  /// How many objects the layers below one have together.
  std::size_t ObjectsBelow(const Layer& layer) const;
  /// The layer with the object of a number, counted over all layers, that exists; `*number` becomes its index there.
  const Layer& WithObject(std::size_t* number) const;

 private:
  void AppendSum(std::size_t objects) const;
  void MakeSums() const;

  std::vector<Layer*> layers_;
  std::unordered_map<LayerID, std::unique_ptr<Layer>> byID_;  // which owns them
  mutable std::vector<std::size_t> sums_;  // of the last i & -i layers up to the i-th, counted from 1; valid if as many
};

}  // namespace host

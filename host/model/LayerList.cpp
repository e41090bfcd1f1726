#include "host/model/LayerList.h"

#include <algorithm>
#include <bit>

namespace host {
namespace {

// The lowest set bit: how many layers a sum of the tree is of.
constexpr std::size_t Span(std::size_t i) { return i & (~i + 1); }

}  // namespace

Layer* LayerList::Find(LayerID id) const {
  const auto found = byID_.find(id);
  return found == byID_.end() ? nullptr : found->second.get();
}

// Layers seldom move far from where they were seen last: the search goes outwards from there.
std::size_t LayerList::IndexOf(LayerID id) const {
  Layer* layer = Find(id);
  if (layer == nullptr) return layers_.size();
  const std::size_t guess = std::min(layer->place, layers_.size() - 1);
  std::size_t found = guess;
  for (std::size_t d = 0; layers_[found] != layer; ++d) {
    if (guess + d < layers_.size() && layers_[guess + d] == layer) found = guess + d;
    if (guess >= d && layers_[guess - d] == layer) found = guess - d;
  }
  layer->place = found;
  return found;
}

void LayerList::Insert(std::unique_ptr<Layer> layer, std::size_t index) {
  index = std::min(index, layers_.size());
  layer->place = index;
  const bool atEnd = index == layers_.size() && sums_.size() == layers_.size();
  const std::size_t objects = layer->objects.Count();
  layers_.insert(layers_.begin() + static_cast<std::ptrdiff_t>(index), layer.get());
  byID_.emplace(layer->id, std::move(layer));
  atEnd ? AppendSum(objects) : sums_.clear();
}

std::unique_ptr<Layer> LayerList::Take(LayerID id) {
  const std::size_t index = IndexOf(id);
  std::unique_ptr<Layer> layer = std::move(byID_.extract(id).mapped());
  layers_.erase(layers_.begin() + static_cast<std::ptrdiff_t>(index));
  if (sums_.size() == layers_.size() + 1 && index == layers_.size()) {
    sums_.pop_back();
  } else {
    sums_.clear();
  }
  return layer;
}

void LayerList::AppendSum(std::size_t objects) const {
  const std::size_t i = sums_.size() + 1;
  for (std::size_t below = 1; below < Span(i); below <<= 1) objects += sums_[i - below - 1];
  sums_.push_back(objects);
}

void LayerList::MakeSums() const {
  if (sums_.size() == layers_.size()) return;
  sums_.clear();
  for (const Layer* layer : layers_) AppendSum(layer->objects.Count());
}

void LayerList::CountObjects(const Layer& layer, std::ptrdiff_t more) {
  if (sums_.size() != layers_.size()) return;
  for (std::size_t i = IndexOf(layer.id) + 1; i <= sums_.size(); i += Span(i)) {
    sums_[i - 1] += static_cast<std::size_t>(more);  // modulo 2^64, so that it can be less
  }
}

std::size_t LayerList::ObjectsBelow(const Layer& layer) const {
  MakeSums();
  std::size_t count = 0;
  for (std::size_t i = IndexOf(layer.id); i != 0; i -= Span(i)) count += sums_[i - 1];
  return count;
}

const Layer& LayerList::WithObject(std::size_t* number) const {
  MakeSums();
  std::size_t passed = 0;  // layers that end before the object
  for (std::size_t step = std::bit_floor(sums_.size()); step != 0; step >>= 1) {
    const std::size_t next = passed + step;
    if (next > sums_.size() || sums_[next - 1] > *number) continue;
    passed = next;
    *number -= sums_[next - 1];
  }
  return *layers_[passed];
}

}  // namespace host

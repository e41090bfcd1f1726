// The layer of a session that gets new objects.
#pragma once

#include "host/session/SessionObservers.h"

namespace host {

class ActiveLayer {
 public:
  ActiveLayer(Document& document, SessionObservers& observers)
      : document_(document), observers_(observers), id_(document.Layers().back()->id) {}

  LayerID Get() const { return id_; }
  void Set(LayerID id) {
    if (id == id_ || document_.FindLayer(id) == nullptr) return;
    id_ = id;
    observers_.Notify([](SessionObserver& observer) { observer.OnActiveLayerChanged(); });
  }
  /// Where a new object goes: in front.
  ObjectPlace Front() const { return {id_, document_.FindLayer(id_)->objects.Count()}; }
  /// Another layer becomes active when this one is gone.
  void Prune() {
    if (document_.FindLayer(id_) == nullptr) Set(document_.Layers().back()->id);
  }

 private:
  Document& document_;
  SessionObservers& observers_;
  LayerID id_;
};

}  // namespace host

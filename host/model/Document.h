// The document of the reference host: a page, and layers of objects.
//
// This is the bare model. It keeps its order, its boxes and its observers right, but it knows of no user: edits, which
// can be undone and which respect locked layers, go through DocumentSession. Layers and objects are drawn in order, the
// first one hindmost. There is always at least one layer. Objects have numbers, 0 upwards over all layers in drawing
// order, which are what the command line shows, and IDs, which stay.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/model/DocumentObserver.h"
#include "host/model/GroupIndex.h"
#include "host/model/LayerList.h"
#include "host/model/ObjectTable.h"
#include "host/model/PageAids.h"
#include "host/text/Problem.h"
#include "kit/geometry/AGSize.h"

namespace host {

/// A place in the order: the index within a layer. An index beyond the end means the end.
struct ObjectPlace {
  LayerID layer = kNoLayerID;
  std::size_t index = 0;

  bool operator==(const ObjectPlace&) const = default;
};

class Document {
 public:
  /// With one empty layer, "Layer 1".
  explicit Document(const AGSize& page);
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document();

  // The page.

  const AGSize& Page() const { return page_; }
  AGColor Background() const { return background_; }
  void SetPage(const AGSize& page, AGColor background);
  const PageAids& Aids() const { return aids_; }
  void SetAids(PageAids aids);

  // Layers. Functions that take the ID of a layer need one that exists unless they say otherwise.

  const std::vector<Layer*>& Layers() const { return layers_.All(); }
  const Layer& FirstLayer() const { return *Layers().front(); }
  const Layer* FindLayer(LayerID id) const { return layers_.Find(id); }  ///< null for an unknown ID
  std::size_t IndexOfLayer(LayerID id) const { return layers_.IndexOf(id); }
  /// Puts a new empty layer at an index of 0 to the count of layers; 0 as its ID gives it a new one.
  LayerID InsertLayer(LayerSettings settings, std::size_t index, LayerID id = kNoLayerID);
  /// The layer must be empty and not the only one.
  void RemoveLayer(LayerID id);
  void MoveLayer(LayerID id, std::size_t index);
  void SetLayerSettings(LayerID id, LayerSettings settings);
  /// The object that stands for the layer towards plug-ins.
  AKObject* StandInOf(LayerID id);

  // Objects. Pointers stay valid until the object is removed. Functions that take an ID need that of an object of this
  // document unless they say otherwise.

  std::size_t ObjectCount() const { return objects_.Count(); }
  /// Differs whenever an object came, went or changed.
  std::uint64_t ObjectsVersion() const { return objectsVersion_; }
  const DocumentObject* Find(ObjectID id) const;                         ///< null for an unknown ID
  const DocumentObject* FindByInstance(const AKObject* instance) const;  ///< null when there is none
  const Layer* LayerOf(ObjectID id) const;                               ///< null for an unknown ID
  ObjectPlace PlaceOf(ObjectID id) const;
  const DocumentObject& ObjectAt(std::size_t number) const;  ///< a number below ObjectCount()
  std::size_t NumberOf(ObjectID id) const;
  /// Calls `f` with each object in drawing order.
  template <typename F>
  void ForEachObject(F f) const {
    for (const Layer* layer : Layers()) layer->objects.ForEach([&f](const DocumentObject& object) { f(object); });
  }

  /// Makes an object of a class, initialised from argument text such as "-default", with a default brush and pen. Fails
  /// when the class is unknown or refuses.
  static Result<std::unique_ptr<DocumentObject>> NewObject(AKClassID classID, const std::string& arguments);
  /// The same around an instance that a plug-in made.
  static std::unique_ptr<DocumentObject> AdoptInstance(AKObject* instance);

  /// An object without an ID gets one.
  ObjectID InsertObject(std::unique_ptr<DocumentObject> object, const ObjectPlace& place);
  /// Puts the object in front of all others.
  ObjectID AppendObject(std::unique_ptr<DocumentObject> object);
  /// The caller disposes of the instance with InstanceCall::Destroy.
  std::unique_ptr<DocumentObject> RemoveObject(ObjectID id);
  /// The index counts without the object itself.
  void MoveObject(ObjectID id, const ObjectPlace& place);
  void SetPlacement(ObjectID id, const ObjectPlacement& placement);
  void SetStyle(ObjectID id, const AGBrush& brush, const AGPen& pen);
  void SetMarks(ObjectID id, ObjectMarks marks);
  /// Another instance of the same class with the record that it gives. Null makes the object a placeholder.
  void ReplaceInstance(ObjectID id, Instance instance, const AKMemoryBlock& record);
  /// The instance changed by itself: its record, kept from now on.
  void NoteRecord(ObjectID id, const AKMemoryBlock& record);

  const GroupIndex& Groups() const { return groups_; }
  /// All groups in the order in which drawing comes upon them, each before those within it.
  std::vector<GroupID> GroupsInOrder() const;
  GroupID NewGroup() { return groups_.NewGroup(); }

  // Views. An observer is removed before it dies.

  /// While one lives, areas that change are kept, and told at its end: each of a few, but a box of many. So an edit of
  /// all objects costs its observers no more than one of some.
  class AreaBatch {
   public:
    explicit AreaBatch(Document& document) : document_(document) { ++document_.batches_; }
    AreaBatch(const AreaBatch&) = delete;
    AreaBatch& operator=(const AreaBatch&) = delete;
    ~AreaBatch() { document_.EndBatch(); }

   private:
    Document& document_;
  };

  void AddObserver(DocumentObserver* observer);
  void RemoveObserver(DocumentObserver* observer);

 private:
  void InsertInto(Layer* layer, std::size_t index, DocumentObject* object);
  void RemoveFrom(Layer* layer, DocumentObject* object);
  DocumentObject* Mutable(ObjectID id) { return objects_.Find(id)->object.get(); }
  void ObjectChanged(DocumentObject* object);
  void NotifyObject(ObjectID id);
  template <typename Call>
  void Notify(Call call) const;
  void NotifyArea(const DocumentObject& object, const Layer& layer);
  void NotifyArea(const AGRect& area);
  void EndBatch();

  AGSize page_;
  AGColor background_ = kAGColorWhite;
  PageAids aids_;
  LayerList layers_;
  ObjectTable objects_;
  InstanceIndex instances_;
  GroupIndex groups_;
  std::vector<DocumentObserver*> observers_;
  unsigned int batches_ = 0;          // that are open, one within the other
  std::vector<AGRect> batchedAreas_;  // what they have to tell
  ObjectID lastObject_ = kNoObjectID;
  std::uint64_t objectsVersion_ = 0;
  LayerID lastLayer_ = kNoLayerID;
};

}  // namespace host

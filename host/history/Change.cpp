#include "host/history/Change.h"

#include <algorithm>

#include "host/model/InstanceCall.h"
#include "host/model/ObjectRecord.h"

namespace host {
namespace {

void Remove(Document& document, ObjectID id) {
  const std::unique_ptr<DocumentObject> object = document.RemoveObject(id);
  InstanceCall::Destroy(std::move(object->instance));
}

// A change of something that can be read from a document and written to it as one value.
template <typename Subject>
class ValueChange final : public Change {
 public:
  ValueChange(const Document& document, typename Subject::Key key)
      : key_(key), before_(Subject::Read(document, key)), after_(before_) {}

  void Undo(Document& document) override { Subject::Write(document, key_, before_); }
  void Redo(Document& document) override { Subject::Write(document, key_, after_); }
  void Seal(const Document& document) override {
    if (Subject::Exists(document, key_)) after_ = Subject::Read(document, key_);
  }
  bool IsVoid() const override { return Subject::Equal(before_, after_); }
  std::size_t Bytes() const override { return sizeof(*this) + Subject::Size(before_) + Subject::Size(after_); }
  ObjectID Object() const override { return Subject::kIsObject ? key_ : kNoObjectID; }

 private:
  typename Subject::Key key_;
  typename Subject::Value before_;
  typename Subject::Value after_;
};

struct PlacementSubject {
  static constexpr bool kIsObject = true;
  using Key = ObjectID;
  using Value = ObjectPlacement;
  static bool Exists(const Document& document, Key id) { return document.Find(id) != nullptr; }
  static Value Read(const Document& document, Key id) { return document.Find(id)->Placement(); }
  static void Write(Document& document, Key id, const Value& value) { document.SetPlacement(id, value); }
  static bool Equal(const Value& a, const Value& b) { return a == b; }
  static std::size_t Size(const Value&) { return 0; }
};

// Brush and pen are compared as their records, and by custom gradients and arrows, which those leave out.
struct Style {
  AGBrush brush;
  AGPen pen;
};

bool SameGradient(const ATBrushCustomGradient<double>* a, const ATBrushCustomGradient<double>* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return a->Bounds() == b->Bounds() &&
         std::equal(a->Positions(), a->Positions() + a->PositionCount(), b->Positions(),
                    b->Positions() + b->PositionCount()) &&
         std::equal(a->Factors(), a->Factors() + a->FactorCount(), b->Factors(), b->Factors() + b->FactorCount());
}

AKMemoryBlock StyleRecord(const Style& style) {
  AKFile stream(AKFile::kModeMemory);
  AKMemoryBlock record;
  stream.CreateForReadWrite();
  style.brush.WriteToFile(stream);
  style.pen.WriteToFile(stream);
  stream.GetMemoryStreamDataBlock(&record);
  return record;
}

struct StyleSubject {
  static constexpr bool kIsObject = true;
  using Key = ObjectID;
  using Value = Style;
  static bool Exists(const Document& document, Key id) { return document.Find(id) != nullptr; }
  static Value Read(const Document& document, Key id) {
    const DocumentObject* object = document.Find(id);
    return {object->brush, object->pen};
  }
  static void Write(Document& document, Key id, const Value& value) { document.SetStyle(id, value.brush, value.pen); }
  static bool Equal(const Value& a, const Value& b) {
    const bool noArrows = a.pen.CustomArrow() == nullptr && b.pen.CustomArrow() == nullptr;
    return noArrows && SameGradient(a.brush.CustomGradient(), b.brush.CustomGradient()) &&
           SameGradient(a.pen.Brush().CustomGradient(), b.pen.Brush().CustomGradient()) &&
           StyleRecord(a) == StyleRecord(b);
  }
  static std::size_t Size(const Value& value) {
    const ATBrushCustomGradient<double>* gradient = value.brush.CustomGradient();
    return gradient == nullptr ? 0 : 2 * sizeof(double) * gradient->PositionCount();
  }
};

struct MarksSubject {
  static constexpr bool kIsObject = true;
  using Key = ObjectID;
  using Value = ObjectMarks;
  static bool Exists(const Document& document, Key id) { return document.Find(id) != nullptr; }
  static Value Read(const Document& document, Key id) { return document.Find(id)->marks; }
  static void Write(Document& document, Key id, const Value& value) { document.SetMarks(id, value); }
  static bool Equal(const Value& a, const Value& b) { return a == b; }
  static std::size_t Size(const Value& value) {
    const std::size_t label = value.label == nullptr ? 0 : sizeof(ObjectLabel) + value.label->text.size();
    return value.groups.size() * sizeof(GroupID) + label;
  }
};

// The record of an instance; writing it makes a new instance.
struct RecordSubject {
  static constexpr bool kIsObject = true;
  using Key = ObjectID;
  using Value = AKMemoryBlock;
  static bool Exists(const Document& document, Key id) { return document.Find(id) != nullptr; }
  static Value Read(const Document& document, Key id) { return document.Find(id)->record; }
  static void Write(Document& document, Key id, const Value& value) {
    int status = 0;
    document.ReplaceInstance(id, MakeInstance(document.Find(id)->classID, value, &status), value);
  }
  static bool Equal(const Value& a, const Value& b) { return a == b; }
  static std::size_t Size(const Value& value) { return value.Size(); }
};

struct PageSubject {
  static constexpr bool kIsObject = false;
  using Key = ObjectID;  // not used
  struct Value {
    AGSize size;
    AGColor background;
    PageAids aids;
  };
  static bool Exists(const Document&, Key) { return true; }
  static Value Read(const Document& document, Key) { return {document.Page(), document.Background(), document.Aids()}; }
  static void Write(Document& document, Key, const Value& value) {
    document.SetPage(value.size, value.background);
    document.SetAids(value.aids);
  }
  static bool Equal(const Value& a, const Value& b) {
    return a.size.width == b.size.width && a.size.height == b.size.height && a.background == b.background &&
           a.aids == b.aids;
  }
  static std::size_t Size(const Value& value) {
    return (value.aids.verticalGuides.size() + value.aids.horizontalGuides.size()) * sizeof(double);
  }
};

struct LayerSettingsSubject {
  static constexpr bool kIsObject = false;
  using Key = LayerID;
  using Value = LayerSettings;
  static bool Exists(const Document& document, Key id) { return document.FindLayer(id) != nullptr; }
  static Value Read(const Document& document, Key id) { return document.FindLayer(id)->settings; }
  static void Write(Document& document, Key id, const Value& value) { document.SetLayerSettings(id, value); }
  static bool Equal(const Value& a, const Value& b) { return a == b; }
  static std::size_t Size(const Value& value) { return value.name.size(); }
};

struct LayerIndexSubject {
  static constexpr bool kIsObject = false;
  using Key = LayerID;
  using Value = std::size_t;
  static bool Exists(const Document& document, Key id) { return document.FindLayer(id) != nullptr; }
  static Value Read(const Document& document, Key id) { return document.IndexOfLayer(id); }
  static void Write(Document& document, Key id, const Value& value) { document.MoveLayer(id, value); }
  static bool Equal(Value a, Value b) { return a == b; }
  static std::size_t Size(Value) { return 0; }
};

struct PlaceSubject {
  static constexpr bool kIsObject = true;
  using Key = ObjectID;
  using Value = ObjectPlace;
  // Where an object stands depends on the others, so the place after is taken at once (see NewMove).
  static bool Exists(const Document& document, Key id) { return document.Find(id) != nullptr; }
  static Value Read(const Document& document, Key id) { return document.PlaceOf(id); }
  static void Write(Document& document, Key id, const Value& value) { document.MoveObject(id, value); }
  static bool Equal(const Value& a, const Value& b) { return a == b; }
  static std::size_t Size(const Value&) { return 0; }
};

std::size_t StateBytes(const DocumentObject* state) {
  return state == nullptr ? 0 : sizeof(*state) + state->record.Size() + state->unknownBody.Size();
}

// An object that comes or goes. Its state is kept while it is not in the document, and for Redo.
class Presence final : public Change {
 public:
  Presence(ObjectID id, bool comes) : id_(id), comes_(comes) {}

  void TakeState(const Document& document) {
    state_ = CopyState(*document.Find(id_));
    place_ = document.PlaceOf(id_);
  }
  void Undo(Document& document) override { comes_ ? Remove(document, id_) : Put(document); }
  void Redo(Document& document) override { comes_ ? Put(document) : Remove(document, id_); }
  void Seal(const Document& document) override {
    if (comes_ && document.Find(id_) != nullptr) state_ = CopyState(*document.Find(id_));
  }
  void TakePlace(const Document& document) { place_ = document.PlaceOf(id_); }
  std::size_t Bytes() const override { return sizeof(*this) + StateBytes(state_.get()); }
  ObjectID Object() const override { return id_; }

 private:
  void Put(Document& document) { document.InsertObject(Revive(*state_), place_); }

  ObjectID id_;
  bool comes_;
  ObjectPlace place_;
  std::unique_ptr<DocumentObject> state_;
};

// A layer that comes or goes, always empty: its objects come after it and go before it.
class LayerPresence final : public Change {
 public:
  LayerPresence(const Document& document, LayerID id, bool comes)
      : id_(id), comes_(comes), index_(document.IndexOfLayer(id)), settings_(document.FindLayer(id)->settings) {}

  void Undo(Document& document) override { Do(document, !comes_); }
  void Redo(Document& document) override { Do(document, comes_); }
  std::size_t Bytes() const override { return sizeof(*this) + settings_.name.size(); }

 private:
  void Do(Document& document, bool insert) {
    if (insert) {
      document.InsertLayer(settings_, index_, id_);
    } else {
      document.RemoveLayer(id_);
    }
  }

  LayerID id_;
  bool comes_;
  std::size_t index_;
  LayerSettings settings_;
};

}  // namespace

std::unique_ptr<Change> NewPlacementChange(const Document& document, ObjectID id) {
  return std::make_unique<ValueChange<PlacementSubject>>(document, id);
}

std::unique_ptr<Change> NewStyleChange(const Document& document, ObjectID id) {
  return std::make_unique<ValueChange<StyleSubject>>(document, id);
}

std::unique_ptr<Change> NewMarksChange(const Document& document, ObjectID id) {
  return std::make_unique<ValueChange<MarksSubject>>(document, id);
}

std::unique_ptr<Change> NewRecordChange(const Document& document, ObjectID id) {
  return std::make_unique<ValueChange<RecordSubject>>(document, id);
}

std::unique_ptr<Change> NewMove(const Document& document, ObjectID id) {
  return std::make_unique<ValueChange<PlaceSubject>>(document, id);
}

std::unique_ptr<Change> NewPageChange(const Document& document) {
  return std::make_unique<ValueChange<PageSubject>>(document, kNoObjectID);
}

std::unique_ptr<Change> NewLayerSettingsChange(const Document& document, LayerID id) {
  return std::make_unique<ValueChange<LayerSettingsSubject>>(document, id);
}

std::unique_ptr<Change> NewLayerMove(const Document& document, LayerID id) {
  return std::make_unique<ValueChange<LayerIndexSubject>>(document, id);
}

std::unique_ptr<Change> NewInsertion(const Document& document, ObjectID id) {
  auto change = std::make_unique<Presence>(id, true);
  change->TakePlace(document);
  return change;
}

std::unique_ptr<Change> NewRemoval(const Document& document, ObjectID id) {
  auto change = std::make_unique<Presence>(id, false);
  change->TakeState(document);
  return change;
}

std::unique_ptr<Change> NewLayerInsertion(const Document& document, LayerID id) {
  return std::make_unique<LayerPresence>(document, id, true);
}

std::unique_ptr<Change> NewLayerRemoval(const Document& document, LayerID id) {
  return std::make_unique<LayerPresence>(document, id, false);
}

}  // namespace host

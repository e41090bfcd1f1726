// One reversible change of a document, as undo steps are made of.
//
// A change is noted when it happens and sealed when its step ends: sealing takes the state after it. Undo is possible
// at any time, Redo of a sealed change only. Changes hold nothing that belongs to a bundle: instances are kept as the
// records that their classes write, and come back as new instances; so an object that is restored has what its record
// tells, to the record's precision.
#pragma once

#include <memory>

#include "host/model/Document.h"

namespace host {

class Change {
 public:
  virtual ~Change() = default;

  virtual void Undo(Document& document) = 0;
  virtual void Redo(Document& document) = 0;
  virtual void Seal(const Document&) {}
  /// A sealed change without an effect.
  virtual bool IsVoid() const { return false; }
  /// The memory that it takes, about.
  virtual std::size_t Bytes() const = 0;
  /// The object that it is about; kNoObjectID for none.
  virtual ObjectID Object() const { return kNoObjectID; }
};

// The states before are taken when these are called. The insertions follow the change, the others go before it;
// NewRecordChange goes before the document is told of the new record.

std::unique_ptr<Change> NewPlacementChange(const Document& document, ObjectID id);
std::unique_ptr<Change> NewStyleChange(const Document& document, ObjectID id);
std::unique_ptr<Change> NewMarksChange(const Document& document, ObjectID id);
std::unique_ptr<Change> NewRecordChange(const Document& document, ObjectID id);
std::unique_ptr<Change> NewInsertion(const Document& document, ObjectID id);
std::unique_ptr<Change> NewRemoval(const Document& document, ObjectID id);
std::unique_ptr<Change> NewMove(const Document& document, ObjectID id);
std::unique_ptr<Change> NewPageChange(const Document& document);
std::unique_ptr<Change> NewLayerInsertion(const Document& document, LayerID id);
std::unique_ptr<Change> NewLayerRemoval(const Document& document, LayerID id);
std::unique_ptr<Change> NewLayerMove(const Document& document, LayerID id);
std::unique_ptr<Change> NewLayerSettingsChange(const Document& document, LayerID id);

}  // namespace host

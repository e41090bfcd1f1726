// The editing of a document: what a user does to it, whether through a window, a script or a command.
//
// A session owns a document and the parts that edit it, each a class with a header of its own; views and commands only
// call them and listen (SessionObserver). Edits work on objects named by ID; a view passes Selection().IDs().
//
// An edit that fails changes nothing. One that names an object of a hidden or locked layer is refused. Each edit is one
// undo step, unless a step is open (SessionSteps::Begin): then it becomes part of that. Units are map units and
// radians, y points up. Everything runs on the main thread.
#pragma once

#include <memory>
#include <string>

#include "host/labels/SessionLabels.h"
#include "host/session/SessionArrangement.h"
#include "host/session/SessionClipboard.h"
#include "host/session/SessionFile.h"
#include "host/session/SessionImport.h"
#include "host/session/SessionLayers.h"
#include "host/session/SessionLooks.h"
#include "host/session/SessionMarks.h"
#include "host/session/SessionObjects.h"

namespace host {

class DocumentSession {
 public:
  explicit DocumentSession(std::unique_ptr<Document> document);
  DocumentSession(const DocumentSession&) = delete;
  DocumentSession& operator=(const DocumentSession&) = delete;
  ~DocumentSession();

  /// Fails when the file can't be read.
  static Result<std::unique_ptr<DocumentSession>> Open(const std::string& path);
  /// A document that a crash left unsaved, to be saved at `path`.
  static std::unique_ptr<DocumentSession> Restore(std::unique_ptr<Document> document, const std::string& path);

  const Document& Doc() const { return *document_; }
  /// A number of this session's own, by which the host's SessionRegistry finds it as long as it lives.
  std::uint64_t Serial() const { return serial_; }

  SessionSteps& Steps() { return steps_; }
  const SessionSteps& Steps() const { return steps_; }
  SessionSelection& Selection() { return selection_; }
  const SessionSelection& Selection() const { return selection_; }
  SessionObjects& Objects() { return objects_; }
  SessionArrangement& Arrangement() { return arrangement_; }
  SessionClipboard& Clipboard() { return clipboard_; }
  const SessionClipboard& Clipboard() const { return clipboard_; }
  SessionImport& Import() { return import_; }
  SessionMarks& Marks() { return marks_; }
  const SessionMarks& Marks() const { return marks_; }
  SessionLooks& Looks() { return looks_; }
  SessionLabels& Labels() { return labels_; }
  SessionLayers& Layers() { return layers_; }
  const SessionLayers& Layers() const { return layers_; }
  SessionFile& File() { return file_; }
  const SessionFile& File() const { return file_; }

  /// Both sides must be above 0.
  Result<> SetPage(const AGSize& page);
  void SetBackground(AGColor color);
  /// Unit, grid and guides; `name` is that of the step. Refused when they are out of range.
  Result<> SetAids(PageAids aids, const std::string& name);
  /// The page becomes as large as the box of all objects that are shown, and all objects move with it to the page's
  /// corner. Fails when there is nothing shown, and for placeholders, which can't be moved.
  Result<> FitPage();
  /// All objects that are not hidden, nor their layers.
  ObjectIDs ShownObjects() const;

  /// What stands for a layer where plug-ins ask for an object.
  AKObject* StandInOf(LayerID id) { return document_->StandInOf(id); }

  void AddObserver(SessionObserver* observer) { observers_.Add(observer); }
  void RemoveObserver(SessionObserver* observer) { observers_.Remove(observer); }

 private:
  std::unique_ptr<Document> document_;
  SessionObservers observers_{*document_};
  SessionSelection selection_{*document_, observers_};
  ActiveLayer activeLayer_{*document_, observers_};
  SessionSteps steps_{*document_, observers_, selection_, activeLayer_};
  SessionObjects objects_{*document_, steps_, selection_, activeLayer_};
  SessionMarks marks_{*document_, steps_, selection_};
  SessionLooks looks_{*document_, steps_, selection_};
  SessionLabels labels_{*document_, steps_};
  SessionArrangement arrangement_{*document_, steps_, selection_, objects_};
  SessionClipboard clipboard_{*document_, steps_, selection_, activeLayer_, objects_};
  SessionImport import_{*document_, steps_, selection_, activeLayer_};
  SessionLayers layers_{*document_, steps_, activeLayer_};
  SessionFile file_{*document_, steps_, observers_};
  std::uint64_t serial_;
};

}  // namespace host

// What keeps unsaved work from being lost when the program dies.
//
// While a document has unsaved changes, a recovery file in "objecthost/recovery" of the user's data folder holds it as
// it is, with the name of the document's own file; saving, closing and undoing back to what was saved remove it. A
// recovery file whose program is no longer running is what a crash left: it is offered by FindRecoveries.
//
// A recovery file is a chunk "HRcv": u32 version 1, u64 process, u64 the start of the process in ticks since boot, i64
// time of writing in seconds since 1970, a chunk "strg" with the path of the document's file (absolute, as the
// system spells it, empty for none), and the document as its "HDoc" chunk, with the records that the host keeps: no
// class is called, whose fault may be what ends the program. It is replaced whole. It has the permissions of the
// document's file; without one it is its user's alone.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/session/DocumentSession.h"
#include "host/text/Problem.h"

namespace host {

/// Writes the recovery file of one session. It dies before the session does.
class Recovery {
 public:
  /// At most one file in `seconds`; 0 for one at each change.
  Recovery(const DocumentSession& session, double seconds);
  Recovery(const Recovery&) = delete;
  Recovery& operator=(const Recovery&) = delete;
  /// The document is closed in good order: nothing needs to be recovered.
  ~Recovery();

  /// To be called after edits, and when UntilDue has passed. A file that can't be written is tried again the next time.
  void Update();
  /// How long until Update has something to write; kNever when it has nothing.
  std::chrono::duration<double> UntilDue() const;
  static constexpr std::chrono::duration<double> kNever = std::chrono::duration<double>::max();
  /// Brings the file up to date at once, however young it is.
  void UpdateNow();
  /// The same, and leaves it behind: the program ends before the document is closed. Does nothing without unsaved
  /// changes. False when it can't be written.
  bool Keep();

 private:
  bool Write();
  void Remove();

  const DocumentSession& session_;
  std::chrono::duration<double> interval_;
  std::string file_;                      // empty while there is none
  std::optional<std::uint64_t> written_;  // the session's count of changes then
  std::chrono::steady_clock::time_point when_;
};

/// A file that a program left that ended without closing its document.
struct RecoveryFile {
  std::string file;
  std::string original;   ///< the document's file, empty for a document that was never saved
  std::int64_t time = 0;  ///< seconds since 1970
};

/// The newest first. Files that are no recovery files are passed over; the folder, and files of it, that can't be read
/// are put into `*unreadable`.
std::vector<RecoveryFile> FindRecoveries(std::vector<Problem>* unreadable = nullptr);

/// The document as it was, with unsaved changes, to be saved at its original path. Fails
/// when the file can't be read. The file stays until DiscardRecovery.
Result<std::unique_ptr<DocumentSession>> OpenRecovery(const RecoveryFile& recovery);

/// Fails when the file can't be removed.
Result<> DiscardRecovery(const RecoveryFile& recovery);

}  // namespace host

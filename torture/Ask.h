// What is asked of the host, a family a file. Each function makes its calls where the moment allows them, and where it
// does not allow them holds the host to the refusal.
#pragma once

#include "torture/Moments.h"

class AKClass;
class AKGUIDesc;
struct AKHostServiceRecord;

namespace torture {

class Examiner;

// The statuses that docs/abi.md promises, written down once more: what a host answers is held against these, not
// against what any host was compiled with.
inline constexpr int kStatusBadInfo = -701;
inline constexpr int kStatusDuplicate = -702;
inline constexpr int kStatusNoParent = -703;
inline constexpr int kStatusNoProperty = -711;
inline constexpr int kStatusNoClass = -721;
inline constexpr int kStatusNoInstance = -722;
inline constexpr int kStatusNoDocument = -731;
inline constexpr int kStatusNotInDocument = -732;
inline constexpr int kStatusNotHere = -733;
inline constexpr int kStatusBadObject = -734;
inline constexpr int kStatusUnwritable = -735;
inline constexpr int kStatusRefused = -736;
/// What a puppet answers when it is told to fail.
inline constexpr int kStatusOwn = -4711;

/// All that may be asked at every moment. Leaves the document as it was.
void AskEverything(const Moment& moment);

/// The record that pluginMain was given.
void AskRecord(const AKHostServiceRecord& record);
/// Sets the bundle's classes up, and asks for classes that can't be. Returns a status that is not 0 when the bundle
/// can't go on.
int AskSetup(unsigned int setupWord);
/// At other moments than the start.
void AskSetupAgain();

void AskGeneral(const Moment& moment);
void AskTexts();
void AskLog();
/// File dialogs and progress, where no user is disturbed: in looking methods, which are refused.
void AskDialogs(const Moment& moment);
/// In front of the user.
void AskDialogsOpen(Examiner* examiner, AKGUIDesc* panel);
void AskClasses();
void AskObjects(const Moment& moment);
void AskRecords(const Moment& moment);
void AskDeletion(const Moment& moment);
void AskDepth();
/// Many at once, ended in another order than they were made.
void AskManyHandlers();
void AskHandlers(const Moment& moment);
/// Many changes as one, for a moment that may edit; leaves one object more in the document.
void AskManyEdits(const Moment& moment);
/// The object takes itself out of its document.
void AskOwnDeletion(Examiner* examiner);
void AskControls();
void AskPanels(const Moment& moment);
/// Texts of a gigabyte, for those who ask for them.
void AskHuge();
/// Whether what is asked again and again leaves memory taken.
void AskMemory(const Moment& moment);

}  // namespace torture

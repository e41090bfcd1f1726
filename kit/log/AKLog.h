// The kit's log: lines that go to the host's log procedure and nowhere else.
//
// Without a procedure nothing is formatted. Lines from a thread other than the main one are dropped unless the
// procedure was declared thread-safe. All lines are built in one process-wide buffer of 32768 bytes.
#pragma once

/// Has the compiler check a printf format: the numbers, from 1, of the format and of its first argument.
#define AK_PRINTF_FORMAT(formatIndex, firstArgument) __attribute__((format(printf, formatIndex, firstArgument)))

/// Receives a finished line, which is borrowed for the call.
using AKLogMessageProc = void (*)(const char*);

/// Sets the procedure that receives finished lines (null silences the log). `threadSafe` counts only with a procedure.
void AKSetCustomLogMessageProc(AKLogMessageProc proc, bool threadSafe);

/// Writes a free-form line as formatted: no prefix, no full stop, no line end; muting does not touch it.
void AKLog(const char* format, ...) AK_PRINTF_FORMAT(1, 2);

/// Writes "# AKLib Warning STATUS: message." (or "Error" for a negative status).
void AKLogWarning(int status, const char* format, ...) AK_PRINTF_FORMAT(2, 3);

/// Writes an error line. Returns `status` when it is negative, else 0, whether or not a line was written.
int AKLogError(int status, const char* format, ...) AK_PRINTF_FORMAT(2, 3);

/// As AKLogError, and adds " (errno N: NAME)." when errno is not 0. The names are a fixed table with BSD numbering.
int AKLogErrorWithErrno(int status, const char* format, ...) AK_PRINTF_FORMAT(2, 3);

/// Muting nests: warnings and errors stay silent until each mute has been undone.
void AKLogErrorMute();
/// Undoes one mute and returns how many remain; 0 when there was none.
unsigned int AKLogErrorUnmute();

/// The empty string for every status.
const char* AKGetStatusRawName(int status);

///@{
/// These do nothing; they stand where debugging builds of a host put their own.
void AKLogDebug(const char* topic, const char* format, ...);
void AKAssert(const char* file, const char* function, int line, bool condition, const char* message);
void AKAssertWarning(const char* file, const char* function, int line, bool condition, const char* message);
///@}

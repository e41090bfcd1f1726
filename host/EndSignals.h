// The signals by which a system asks a program to end: when it shuts down, when a terminal is closed.
#pragma once

namespace host {

/// While one lives, the first SIGTERM or SIGHUP is noted instead of ending the program at once; a second one ends it.
/// A signal that the program was started to ignore stays ignored. There is one at a time.
class EndSignals {
 public:
  EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;
  ~EndSignals();

  /// The signal that came; 0 for none.
  static int Caught();
  /// A descriptor that can be read once one came; -1 when there is none.
  static int Descriptor();
  /// Ends the program by the signal that came.
  [[noreturn]] static void End();
};

}  // namespace host

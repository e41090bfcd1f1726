// How far some long work is, told to whoever shows it.
#pragma once

namespace host {

class Progress {
 public:
  virtual ~Progress() = default;

  /// `fraction` from 0 to 1, in no particular steps. False when the work shall stop.
  virtual bool Step(double fraction) = 0;
};

}  // namespace host

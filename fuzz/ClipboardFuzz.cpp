// What was copied by any program. Pasting takes all of it or leaves the document; it can be undone, and what was pasted
// can be copied and pasted again as the same.
#include "fuzz/HostFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using host_fuzz::Bytes;
  using host_fuzz::Require;
  host_fuzz::Start();
  const std::string clipboard(reinterpret_cast<const char*>(data), size);
  const auto session = host_fuzz::MakeSession(1);
  const std::string before = Bytes(session->Doc());
  const bool moves = size % 2 != 0;
  if (!session->Clipboard().Paste(clipboard, moves ? 5 : 0, 0)) {
    Require(session->Steps().Known().Count() == 0 && Bytes(session->Doc()) == before);
    return 0;
  }
  // What a class keeps free it writes as zeros, whatever it read.
  const std::string copy = session->Clipboard().Copy(session->Selection().IDs());
  Require(session->Steps().Undo() && Bytes(session->Doc()) == before);
  Require(static_cast<bool>(session->Clipboard().Paste(copy, 0, 0)));
  Require(session->Clipboard().Copy(session->Selection().IDs()) == copy);
  return 0;
}

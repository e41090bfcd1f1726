// What panels and controls of the host have in common.
#pragma once

namespace host {

struct PanelItem {
  unsigned int id = 0;
  unsigned int flags = 0;
};

}  // namespace host

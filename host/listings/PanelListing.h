// Inspector panels as text.
#pragma once

#include <string>

#include "host/panels/HostPanel.h"

namespace host {

/// The panel, then one line a control: ID, type, place and size, and what it shows.
std::string PanelListing(const HostPanel& panel);

}  // namespace host

#pragma once

#include "Linux/Sessions/X11/RandR/Configuration.h"

#include <vector>

namespace tessary {

/// Fills in panning and transform of the CRTCs that show something. What the server does not answer
/// stays as it is.
void readCrtcDetails(const XConnection& connection, std::vector<CrtcState>& crtcs);

/// Fills in EDID, connector type and purpose of the outputs that show something. What the server
/// does not answer stays as it is.
void readOutputDetails(const XConnection& connection, std::vector<OutputState>& outputs);

} // namespace tessary

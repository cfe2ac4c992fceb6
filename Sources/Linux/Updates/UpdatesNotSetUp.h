#pragma once

namespace tessary {

/// Shows a dialog that says so, or brings it to the front. It lies beside the program's windows.
/// In a loop with windows.
void tellThatUpdatesAreNotSetUp();

} // namespace tessary

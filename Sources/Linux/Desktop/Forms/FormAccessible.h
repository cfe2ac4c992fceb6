#pragma once

namespace tessary {

/// Lets assistive technologies see the sections of forms as groups, and plain windows as windows.
/// More than once does no harm.
void installFormAccessible();

} // namespace tessary

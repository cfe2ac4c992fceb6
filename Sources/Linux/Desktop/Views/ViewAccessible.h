#pragma once

namespace tessary {

/// Lets assistive technologies see the views: as buttons, with the name that their widget was given
/// and the texts that they show as description. More than once does no harm.
void installViewAccessible();

} // namespace tessary

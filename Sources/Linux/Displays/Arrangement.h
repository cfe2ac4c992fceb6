#pragma once

#include "Linux/Displays/Geometry.h"

#include <cstddef>
#include <vector>

namespace tessary {

/// The layout after the display at `changed` got another size. Its neighbours keep to its edges and
/// take theirs along; what would overlap is pushed outwards; the layout starts at 0,0. No two
/// overlap afterwards and those that touched another one still do. A layout that overlapped before
/// keeps its places: it was made on purpose.
std::vector<PixelRect> arrange(const std::vector<PixelRect>& before, std::size_t changed,
                               PixelSize size);

/// Where a point of `before` lies after its display became `after`: at the same relative place.
PixelPoint carriedAlong(PixelPoint point, const PixelRect& before, const PixelRect& after);

} // namespace tessary

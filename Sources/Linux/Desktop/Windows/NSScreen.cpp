#include "Platform/AppKit/NSScreen.h"

#include "Linux/Displays/Displays.h"
#include "Linux/Displays/ScreenCoordinates.h"
#include "Linux/Session.h"
#include "Platform/AppKit/NSEvent.h"

#include <algorithm>
#include <limits>

namespace {

using tessary::DisplayRecord;
using tessary::DisplayRecords;
using tessary::Displays;
using tessary::PixelRect;

PixelRect mainFrame(const DisplayRecords& displays) {
    const auto main = std::ranges::find_if(displays, &DisplayRecord::isMain);
    return main != displays.end() ? main->frame : PixelRect{};
}

} // namespace

std::vector<NSScreen> NSScreen::screens() {
    if (Displays::current() == nullptr)
        return {};
    const DisplayRecords& displays = Displays::current()->lastDisplays();
    const PixelRect main = mainFrame(displays);
    std::vector<NSScreen> screens;
    for (const DisplayRecord& display : displays)
        screens.push_back({tessary::globalFrame(display.frame, main),
                           display.name,
                           {{"NSScreenNumber", display.id}}});
    return screens;
}

CGPoint NSEvent::mouseLocation() {
    constexpr double nowhere = -std::numeric_limits<double>::infinity();
    const auto pointer = tessary::Session::current().pointer();
    if (!pointer || Displays::current() == nullptr)
        return {nowhere, nowhere};
    return tessary::globalPoint(*pointer, mainFrame(Displays::current()->displays()));
}

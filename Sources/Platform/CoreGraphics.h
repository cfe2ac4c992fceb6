// The display service: which displays there are, their modes, and switching between them.
//
// Everything here is called on the main thread. Sizes are in points unless a name says pixels;
// refresh rates are in hertz.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// Result of a display-service call; 0 is success.
using CGError = std::int32_t;

inline constexpr CGError kCGErrorSuccess = 0;
inline constexpr CGError kCGErrorFailure = 1000;
inline constexpr CGError kCGErrorIllegalArgument = 1001;

/// Identifies an active display while it stays connected. Not stable over restarts.
using CGDirectDisplayID = std::uint32_t;

struct CGPoint {
    double x = 0;
    double y = 0;

    friend bool operator==(const CGPoint&, const CGPoint&) = default;
};

struct CGSize {
    double width = 0;
    double height = 0;

    friend bool operator==(const CGSize&, const CGSize&) = default;
};

struct CGRect {
    CGPoint origin;
    CGSize size;

    friend bool operator==(const CGRect&, const CGRect&) = default;
};

/// Whether `point` lies in `rect`. The minimum edges belong to the rectangle, the maximum edges do
/// not.
inline bool CGRectContainsPoint(const CGRect& rect, const CGPoint& point) {
    return point.x >= rect.origin.x && point.x < rect.origin.x + rect.size.width &&
           point.y >= rect.origin.y && point.y < rect.origin.y + rect.size.height;
}

/// One mode of a display, immutable. Made by the display service only.
struct CGDisplayMode {
    std::uint32_t ioDisplayModeID = 0; ///< the service's own number of the mode
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t pixelWidth = 0;
    double refreshRate = 0; ///< 0 when the display reports none
    bool isUsableForDesktopGUI = true;
};

using CGDisplayModeRef = std::shared_ptr<const CGDisplayMode>;

inline std::int64_t CGDisplayModeGetWidth(const CGDisplayMode& mode) {
    return mode.width;
}
inline std::int64_t CGDisplayModeGetHeight(const CGDisplayMode& mode) {
    return mode.height;
}

/// Width in device pixels; greater than the width in a high-density mode.
inline std::int64_t CGDisplayModeGetPixelWidth(const CGDisplayMode& mode) {
    return mode.pixelWidth;
}

inline double CGDisplayModeGetRefreshRate(const CGDisplayMode& mode) {
    return mode.refreshRate;
}

/// Whether the mode may carry a desktop.
inline bool CGDisplayModeIsUsableForDesktopGUI(const CGDisplayMode& mode) {
    return mode.isUsableForDesktopGUI;
}

/// Options of `CGDisplayCopyAllDisplayModes`.
using CFDictionary = std::map<std::string_view, bool>;

inline constexpr bool kCFBooleanTrue = true;

/// Include the low-density duplicates of high-density sizes.
inline constexpr std::string_view kCGDisplayShowDuplicateLowResolutionModes =
    "kCGDisplayResolution";

/// All modes of `display`, in the service's order. Nothing for a display that is not active.
std::optional<std::vector<CGDisplayModeRef>>
CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, const CFDictionary& options);

/// The mode that `display` shows now. Nothing for a display that is not active.
CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display);

/// Lists the active displays. With capacity 0 and no buffer only reports their number; otherwise
/// writes at most `capacity` identifiers and reports how many it wrote. Any answer but 0 is failure
/// and leaves both outputs undefined.
CGError CGGetActiveDisplayList(std::uint32_t capacity, CGDirectDisplayID* displays,
                               std::uint32_t* count);

/// Whether the display is built into the computer. False for a display that is not active.
bool CGDisplayIsBuiltin(CGDirectDisplayID display);

/// Whether the display is the one at the origin of the global coordinates. False for a display that
/// is not active.
bool CGDisplayIsMain(CGDirectDisplayID display);

/// The numbers by which the hardware names itself; 0 for a display that is not active.
std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID display);
std::uint32_t CGDisplayModelNumber(CGDirectDisplayID display);
std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID display);

/// A configuration transaction. Owned by the service from begin until complete or cancel.
using CGDisplayConfigRef = struct CGDisplayConfig*;

using CGConfigureOption = std::uint32_t;

/// The change outlasts the program and the user's log-out.
inline constexpr CGConfigureOption kCGConfigurePermanently = 2;

/// Opens a transaction and hands it back in `configuration`. Any answer but 0 is failure.
CGError CGBeginDisplayConfiguration(CGDisplayConfigRef* configuration);

/// Records in the transaction that `display` is to show `mode`. Any answer but 0 is failure; the
/// transaction stays open.
CGError CGConfigureDisplayWithDisplayMode(CGDisplayConfigRef configuration,
                                          CGDirectDisplayID display, const CGDisplayModeRef& mode);

/// Carries out the transaction, whole or not at all, and closes it. Any answer but 0 is failure and
/// leaves the displays as they were.
CGError CGCompleteDisplayConfiguration(CGDisplayConfigRef configuration, CGConfigureOption option);

/// Closes the transaction without carrying it out. Any answer but 0 is failure.
CGError CGCancelDisplayConfiguration(CGDisplayConfigRef configuration);

using CGDisplayChangeSummaryFlags = std::uint32_t;

/// The report comes before the change.
inline constexpr CGDisplayChangeSummaryFlags kCGDisplayBeginConfigurationFlag = 1U << 0U;

using CGDisplayReconfigurationCallBack = void (*)(CGDirectDisplayID display,
                                                  CGDisplayChangeSummaryFlags flags,
                                                  void* userInfo);

/// Has `callback` called for every display that a reconfiguration affects: once with the begin
/// flag, while the service answers what was so before, and once without it, when it answers what is
/// so since. Both come when the service has heard of the change; until then calls may answer
/// either. The thread is not promised. Any answer but 0 is failure.
CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback,
                                                 void* userInfo);

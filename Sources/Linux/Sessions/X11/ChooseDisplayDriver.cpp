#include "Linux/Displays/DisplayDriver.h"
#include "Linux/Sessions/X11/RandR/RandRDriver.h"
#include "Linux/Sessions/X11/Reply.h"
#include "Linux/Sessions/X11/XConnection.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tessary {

namespace {

/// Stands for a session whose displays cannot be switched.
class NoDisplays : public DisplayDriver {
public:
    explicit NoDisplays(bool canGrabKeys) : canGrabKeys_(canGrabKeys) {}

    const DisplayRecords& displays() override { return none_; }
    const DisplayRecords& lastDisplays() const override { return none_; }
    bool apply(const std::vector<ModeChange>& /*changes*/, Permanence /*permanence*/) override {
        return false;
    }
    void restorePermanentModes() override {}
    void setReportHandler(ReportHandler /*handler*/) override {}
    bool canGrabKeys() const override { return canGrabKeys_; }

private:
    DisplayRecords none_;
    bool canGrabKeys_;
};

bool hasExtension(const XConnection& x, std::string_view name) {
    const XReply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
        x.get(), xcb_query_extension(x.get(), static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply && reply->present != 0;
}

bool hasRandR(const XConnection& x) {
    if (!hasExtension(x, "RANDR"))
        return false;
    const XReply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(x.get(), xcb_randr_query_version(x.get(), 1, 6), nullptr));
    return version && (version->major_version > 1 || version->minor_version >= 3);
}

/// Newer ones tell by an extension of that name, older ones name their outputs so.
bool isXwayland(const XConnection& x) {
    if (hasExtension(x, "XWAYLAND"))
        return true;
    const auto configuration = readConfiguration(x);
    return configuration && std::ranges::any_of(configuration->outputs, [](const auto& output) {
               return output.name.starts_with("XWAYLAND");
           });
}

std::unique_ptr<DisplayDriver> withoutRandR(XConnection& x) {
    if (hasRandR(x))
        return nullptr;
    NSLog("tessary: the X server has no RandR 1.3; displays cannot be switched");
    return std::make_unique<NoDisplays>(true);
}

std::unique_ptr<DisplayDriver> onXwayland(XConnection& x) {
    if (!isXwayland(x))
        return nullptr;
    NSLog("tessary: this is a Wayland session, whose displays and keys an X program cannot reach");
    return std::make_unique<NoDisplays>(false);
}

std::unique_ptr<DisplayDriver> onXServer(XConnection& x) {
    return RandRDriver::make(x);
}

std::unique_ptr<DisplayDriver> otherwise(XConnection& /*x*/) {
    NSLog("tessary: the X server does not tell its displays");
    return std::make_unique<NoDisplays>(true);
}

} // namespace

std::unique_ptr<DisplayDriver> chooseDisplayDriver(XConnection& connection) {
    // In the order of asking; the first that knows the session takes it.
    constexpr std::array candidates{withoutRandR, onXwayland, onXServer, otherwise};
    for (const auto candidate : candidates)
        if (auto driver = candidate(connection))
            return driver;
    return nullptr;
}

} // namespace tessary

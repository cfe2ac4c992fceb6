#include "Platform/CoreGraphics.h"

#include "Linux/Displays/Displays.h"

#include <algorithm>
#include <list>
#include <memory>
#include <utility>
#include <vector>

struct CGDisplayConfig {
    std::vector<tessary::ModeChange> changes;
};

namespace {

using tessary::DisplayRecord;
using tessary::DisplayRecords;
using tessary::Displays;
using tessary::ModeRecord;

struct Callback {
    CGDisplayReconfigurationCallBack function = nullptr;
    void* userInfo = nullptr;
};

struct Service {
    std::list<std::unique_ptr<CGDisplayConfig>> transactions;
    std::vector<Callback> callbacks;
};

Service& service() {
    static auto& instance = *new Service;
    return instance;
}

/// A memory read. Null where displays cannot be switched.
const DisplayRecord* recordOf(CGDirectDisplayID display) {
    const auto* displays = Displays::current();
    return displays != nullptr ? tessary::findDisplay(displays->lastDisplays(), display) : nullptr;
}

CGDisplayModeRef modeOf(const ModeRecord& mode) {
    const bool isTurned =
        (mode.size.width < mode.size.height) != (mode.pixels.width < mode.pixels.height);
    const int pixelWidth = isTurned ? mode.pixels.height : mode.pixels.width;
    return std::make_shared<const CGDisplayMode>(CGDisplayMode{
        mode.id, mode.size.width, mode.size.height, pixelWidth, mode.rate, mode.isUsable});
}

std::unique_ptr<CGDisplayConfig> closed(CGDisplayConfigRef configuration) {
    auto& transactions = service().transactions;
    const auto entry = std::ranges::find_if(
        transactions, [&](const auto& transaction) { return transaction.get() == configuration; });
    if (entry == transactions.end())
        return nullptr;
    auto transaction = std::move(*entry);
    transactions.erase(entry);
    return transaction;
}

void report(CGDirectDisplayID display, tessary::ReportTime time) {
    const CGDisplayChangeSummaryFlags flags =
        time == tessary::ReportTime::before ? kCGDisplayBeginConfigurationFlag : 0;
    const auto callbacks = service().callbacks;
    for (const Callback& callback : callbacks)
        callback.function(display, flags, callback.userInfo);
}

} // namespace

std::optional<std::vector<CGDisplayModeRef>>
CGDisplayCopyAllDisplayModes(CGDirectDisplayID display, const CFDictionary& /*options*/) {
    const DisplayRecord* record = recordOf(display);
    if (record == nullptr)
        return std::nullopt;
    std::vector<CGDisplayModeRef> modes;
    modes.reserve(record->modes.size());
    std::ranges::transform(record->modes, std::back_inserter(modes), modeOf);
    return modes;
}

CGDisplayModeRef CGDisplayCopyDisplayMode(CGDirectDisplayID display) {
    const DisplayRecord* record = recordOf(display);
    return record != nullptr && record->current ? modeOf(*record->current) : nullptr;
}

CGError CGGetActiveDisplayList(std::uint32_t capacity, CGDirectDisplayID* displays,
                               std::uint32_t* count) {
    auto* current = Displays::current();
    if (current == nullptr || count == nullptr)
        return kCGErrorFailure;
    const DisplayRecords& records = current->displays();
    *count = static_cast<std::uint32_t>(records.size());
    if (displays == nullptr)
        return kCGErrorSuccess;
    *count = std::min(*count, capacity);
    std::ranges::transform(records.begin(), records.begin() + *count, displays, &DisplayRecord::id);
    return kCGErrorSuccess;
}

bool CGDisplayIsBuiltin(CGDirectDisplayID display) {
    const DisplayRecord* record = recordOf(display);
    return record != nullptr && record->isBuiltin;
}

bool CGDisplayIsMain(CGDirectDisplayID display) {
    const DisplayRecord* record = recordOf(display);
    return record != nullptr && record->isMain;
}

std::uint32_t CGDisplayVendorNumber(CGDirectDisplayID display) {
    const DisplayRecord* record = recordOf(display);
    return record != nullptr ? record->vendor : 0;
}

std::uint32_t CGDisplayModelNumber(CGDirectDisplayID display) {
    const DisplayRecord* record = recordOf(display);
    return record != nullptr ? record->model : 0;
}

std::uint32_t CGDisplaySerialNumber(CGDirectDisplayID display) {
    const DisplayRecord* record = recordOf(display);
    return record != nullptr ? record->serial : 0;
}

CGError CGBeginDisplayConfiguration(CGDisplayConfigRef* configuration) {
    auto* current = Displays::current();
    if (current == nullptr || configuration == nullptr)
        return kCGErrorFailure;
    current->displays(); // what the session told so far is the state to start from
    service().transactions.push_back(std::make_unique<CGDisplayConfig>());
    *configuration = service().transactions.back().get();
    return kCGErrorSuccess;
}

CGError CGConfigureDisplayWithDisplayMode(CGDisplayConfigRef configuration,
                                          CGDirectDisplayID display, const CGDisplayModeRef& mode) {
    const DisplayRecord* record = recordOf(display);
    if (configuration == nullptr || record == nullptr || mode == nullptr)
        return kCGErrorIllegalArgument;
    if (std::ranges::find(record->modes, mode->ioDisplayModeID, &ModeRecord::id) ==
        record->modes.end())
        return kCGErrorIllegalArgument;
    configuration->changes.push_back({display, mode->ioDisplayModeID});
    return kCGErrorSuccess;
}

CGError CGCompleteDisplayConfiguration(CGDisplayConfigRef configuration, CGConfigureOption option) {
    const auto transaction = closed(configuration);
    if (!transaction)
        return kCGErrorIllegalArgument;
    const auto permanence = option == kCGConfigurePermanently ? tessary::Permanence::permanent
                                                              : tessary::Permanence::untilLogOut;
    return Displays::current()->apply(transaction->changes, permanence) ? kCGErrorSuccess
                                                                        : kCGErrorFailure;
}

CGError CGCancelDisplayConfiguration(CGDisplayConfigRef configuration) {
    return closed(configuration) ? kCGErrorSuccess : kCGErrorIllegalArgument;
}

CGError CGDisplayRegisterReconfigurationCallback(CGDisplayReconfigurationCallBack callback,
                                                 void* userInfo) {
    auto* current = Displays::current();
    if (current == nullptr || callback == nullptr)
        return kCGErrorFailure;
    service().callbacks.push_back({callback, userInfo});
    current->setReportHandler(report);
    return kCGErrorSuccess;
}

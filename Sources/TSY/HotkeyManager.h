#pragma once

#include "Platform/Carbon.h"
#include "TSY/Shortcut.h"

#include <cstdint>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tsy {

/// Makes shortcuts work whichever application is in front. Knows nothing of slots or displays: it
/// maps shortcuts to handlers. Main thread only.
class HotkeyManager {
public:
    using Handler = std::function<void()>;

    /// The one instance, never destroyed.
    static HotkeyManager& shared();

    /// Requests a hot key; while suspended it takes effect with the resumption. A refusal is logged
    /// and tried again with the next resumption.
    void register_(const Shortcut& shortcut, Handler handler);

    /// Withdraws every hot key and forgets every request. A suspension goes on.
    void unregisterAll();

    /// While suspended nothing is registered with the platform; every request is replayed, in
    /// order, when the suspension ends.
    void setSuspended(bool suspended);

    HotkeyManager(const HotkeyManager&) = delete;
    HotkeyManager& operator=(const HotkeyManager&) = delete;

private:
    using HotKeyNumber = std::uint32_t;

    HotkeyManager();
    ~HotkeyManager() = default;

    void installEventHandler();
    bool install(const Shortcut& shortcut, const Handler& handler);
    void withdrawAll();
    static OSStatus handleEvent(EventHandlerCallRef call, EventRef event, void* userData);

    std::unordered_map<HotKeyNumber, Handler> handlers_;
    std::unordered_map<HotKeyNumber, EventHotKeyRef> refs_;
    std::vector<std::pair<Shortcut, Handler>> pending_; ///< every request, installed or not
    HotKeyNumber nextID_ = 1;                           ///< taken by failed attempts too
    EventHandlerRef eventHandler_ = nullptr;
    bool isSuspended_ = false;
};

} // namespace tsy

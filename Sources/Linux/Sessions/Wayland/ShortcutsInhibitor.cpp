#include "Linux/Sessions/Wayland/ShortcutsInhibitor.h"

#include <QGuiApplication>
#include <QWindow>

#include <cstdint>
#include <string_view>

#include <protocols/keyboard-shortcuts-inhibit-unstable-v1.h>
#include <qpa/qplatformnativeinterface.h>
#include <wayland-client.h>

namespace tessary {

namespace {

using Manager = zwp_keyboard_shortcuts_inhibit_manager_v1;

constexpr wl_registry_listener managerListener{
    [](void* manager, wl_registry* registry, std::uint32_t name, const char* interface,
       std::uint32_t /*version*/) {
        const auto& wanted = zwp_keyboard_shortcuts_inhibit_manager_v1_interface;
        if (std::string_view(interface) == wanted.name)
            *static_cast<Manager**>(manager) =
                static_cast<Manager*>(wl_registry_bind(registry, name, &wanted, 1));
    },
    [](void*, wl_registry*, std::uint32_t) {}};

/// On the toolkit's connection, whose objects it has to know, but on a queue of our own: the
/// toolkit's events must not be handled meanwhile. Null when the compositor has none.
Manager* managerOn(wl_display* display) {
    Manager* manager = nullptr;
    wl_event_queue* queue = wl_display_create_queue(display);
    void* wrapper = wl_proxy_create_wrapper(display);
    wl_proxy_set_queue(static_cast<wl_proxy*>(wrapper), queue);
    wl_registry* registry = wl_display_get_registry(static_cast<wl_display*>(wrapper));
    wl_proxy_wrapper_destroy(wrapper);
    wl_registry_add_listener(registry, &managerListener, &manager);
    wl_display_roundtrip_queue(display, queue);
    wl_registry_destroy(registry);
    if (manager != nullptr) // back to the toolkit's queue
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(manager), nullptr);
    wl_event_queue_destroy(queue);
    return manager;
}

} // namespace

std::unique_ptr<ShortcutsInhibitor> ShortcutsInhibitor::make(QWindow& window) {
    auto* native = QGuiApplication::platformNativeInterface();
    if (native == nullptr)
        return nullptr;
    auto* display = static_cast<wl_display*>(native->nativeResourceForIntegration("wl_display"));
    auto* seat = static_cast<wl_seat*>(native->nativeResourceForIntegration("wl_seat"));
    auto* surface = static_cast<wl_surface*>(native->nativeResourceForWindow("surface", &window));
    if (display == nullptr || seat == nullptr || surface == nullptr)
        return nullptr;
    Manager* manager = managerOn(display);
    if (manager == nullptr)
        return nullptr;
    auto* inhibitor =
        zwp_keyboard_shortcuts_inhibit_manager_v1_inhibit_shortcuts(manager, surface, seat);
    wl_display_flush(display);
    return std::unique_ptr<ShortcutsInhibitor>(new ShortcutsInhibitor(manager, inhibitor));
}

// The toolkit sends it with its next request or before it sleeps.
ShortcutsInhibitor::~ShortcutsInhibitor() {
    zwp_keyboard_shortcuts_inhibitor_v1_destroy(inhibitor_);
    zwp_keyboard_shortcuts_inhibit_manager_v1_destroy(manager_);
}

} // namespace tessary

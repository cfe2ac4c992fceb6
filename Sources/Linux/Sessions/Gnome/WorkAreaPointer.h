#pragma once

#include "Linux/Displays/DisplayRecord.h"
#include "Linux/Sessions/Wayland/WaylandConnection.h"

#include <memory>
#include <optional>

struct xdg_wm_base;

namespace tessary {

/// Finds the display under the pointer on Mutter, which tells no client where the pointer is. A new
/// window opens on the display with the pointer, and xdg_toplevel.configure_bounds (xdg-shell,
/// version 4) tells how large it may be there: the display's size, less the panels. For that the
/// window need not be shown.
class WorkAreaPointer {
public:
    /// The connection must outlive it.
    explicit WorkAreaPointer(WaylandConnection& connection);
    ~WorkAreaPointer();

    /// The centre of the display under the pointer, in the coordinates of the frames. Where the
    /// size alone does not tell the display, as among equal ones, a transparent window of 2 × 2
    /// points is shown for a moment, which may take the keyboard's focus as long. Waits 0.6
    /// seconds at most; nothing when the compositor has not told it by then.
    std::optional<PixelPoint> find(const DisplayRecords& displays);

    WorkAreaPointer(const WorkAreaPointer&) = delete;
    WorkAreaPointer& operator=(const WorkAreaPointer&) = delete;

private:
    class Window;

    template <typename Proxy>
    using Global = std::unique_ptr<Proxy, void (*)(Proxy*)>;

    WaylandConnection& connection_;
    std::unique_ptr<wl_event_queue, decltype(&wl_event_queue_destroy)> queue_; ///< of all below
    Global<wl_compositor> compositor_;
    Global<wl_shm> memory_;
    Global<xdg_wm_base> shell_;
};

/// The display whose size a work area tells: the only one of exactly that size, or else the only
/// one that is larger by no more than panels take. Null when several or none are.
const DisplayRecord* displayOfWorkArea(const DisplayRecords& displays, PixelSize workArea);

} // namespace tessary

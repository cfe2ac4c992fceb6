#pragma once

#include "Linux/Displays/Geometry.h"
#include "Linux/Sessions/Wayland/WaylandConnection.h"

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

struct zxdg_output_manager_v1;
struct zxdg_output_v1;

namespace tessary {

/// What each output shows in points, exactly, as the protocol xdg-output tells it. KWin tells it a
/// little after the other properties of a change.
class ShownSizes {
public:
    /// `changed` is called when a size is told. The connection must outlive it.
    ShownSizes(WaylandConnection& connection, std::function<void()> changed);
    ~ShownSizes();

    /// A wl_output that the compositor announces, and one that goes: the global's name.
    void add(wl_registry* registry, std::uint32_t name);
    void remove(std::uint32_t name);

    /// Nothing where none is told for this connector.
    std::optional<PixelSize> sizeOf(const std::string& connector) const;

    ShownSizes(const ShownSizes&) = delete;
    ShownSizes& operator=(const ShownSizes&) = delete;

private:
    struct Output;
    struct Listener;

    std::function<void()> changed_;
    std::list<Output> outputs_; // their addresses are the listener's data
    std::unique_ptr<zxdg_output_manager_v1, void (*)(zxdg_output_manager_v1*)> manager_;
};

} // namespace tessary

#pragma once

#include "Linux/Sessions/Kde/KdeState.h"
#include "Linux/Sessions/Kde/ShownSizes.h"
#include "Linux/Sessions/Wayland/WaylandConnection.h"

#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <tuple>

struct kde_output_configuration_v2;
struct kde_output_device_mode_v2;
struct kde_output_device_v2;
struct kde_output_order_v1;

namespace tessary {

/// The outputs that KWin announces, as it has told them so far: one object for each.
class KdeOutputs {
public:
    /// `changed` is called whenever an event may have changed the state, also in the middle of a
    /// change. The connection must outlive it.
    KdeOutputs(WaylandConnection& connection, std::function<void()> changed);
    ~KdeOutputs();

    /// The outputs that have been told whole.
    KdeState state();

    /// Writes into a configuration what differs between two states. False when nothing does.
    bool write(kde_output_configuration_v2* configuration, const KdeState& before,
               const KdeState& after);

    KdeOutputs(const KdeOutputs&) = delete;
    KdeOutputs& operator=(const KdeOutputs&) = delete;

private:
    struct Device;
    struct Mode;
    struct Listeners;

    std::uint32_t numberOf(const KdeMode& mode);

    std::function<void()> changed_;
    std::list<Device> devices_; // their addresses are the listeners' data
    std::map<std::tuple<int, int, int>, std::uint32_t> modeNumbers_; ///< by width, height, rate
    std::string mainConnector_;
    bool isOrderNew_ = true; ///< the next name is the first of an order
    std::unique_ptr<wl_registry, void (*)(wl_registry*)> registry_;
    std::unique_ptr<kde_output_order_v1, void (*)(kde_output_order_v1*)> order_;
    ShownSizes sizes_;
};

} // namespace tessary

#include "Linux/Sessions/Kde/KdeOutputs.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <QByteArray>
#include <protocols/kde-output-device-v2.h>
#include <protocols/kde-output-management-v2.h>
#include <protocols/kde-output-order-v1.h>

namespace tessary {

struct KdeOutputs::Mode {
    kde_output_device_mode_v2* proxy = nullptr;
    Device* device = nullptr;
    KdeMode told;
};

struct KdeOutputs::Device {
    KdeOutputs* owner = nullptr;
    kde_output_device_v2* proxy = nullptr;
    KdeOutput told; ///< without modes
    std::list<Mode> modes{};
    const kde_output_device_mode_v2* current = nullptr;
    bool isWhole = false; ///< told to the end once

    Device(KdeOutputs* outputs, kde_output_device_v2* device, std::uint32_t id)
        : owner(outputs), proxy(device) {
        told.id = id;
    }
    ~Device() {
        for (const Mode& mode : modes)
            kde_output_device_mode_v2_destroy(mode.proxy);
        kde_output_device_v2_destroy(proxy);
    }
    kde_output_device_mode_v2* mode(std::uint32_t number) const {
        const auto mode = std::ranges::find_if(modes, [&](const Mode& candidate) {
            return owner->numberOf(candidate.told) == number;
        });
        return mode->proxy; // what is planned is from the list
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
};

struct KdeOutputs::Listeners {
    static KdeOutputs& outputs(void* data) { return *static_cast<KdeOutputs*>(data); }
    static Device& device(void* data) { return *static_cast<Device*>(data); }
    static KdeMode& mode(void* data) { return static_cast<Mode*>(data)->told; }

    static void removeMode(void* data, kde_output_device_mode_v2* proxy) {
        Device& device = *static_cast<Mode*>(data)->device;
        if (device.current == proxy)
            device.current = nullptr;
        device.modes.remove_if([proxy](const Mode& mode) { return mode.proxy == proxy; });
        kde_output_device_mode_v2_destroy(proxy);
        device.owner->changed_();
    }

    static constexpr kde_output_device_mode_v2_listener ofMode{
        [](void* data, kde_output_device_mode_v2*, std::int32_t width, std::int32_t height) {
            mode(data).size = {width, height};
        },
        [](void* data, kde_output_device_mode_v2*, std::int32_t rate) { mode(data).rate = rate; },
        [](void* data, kde_output_device_mode_v2*) { mode(data).isPreferred = true; }, removeMode};

    static void addMode(void* data, kde_output_device_v2*, kde_output_device_mode_v2* proxy) {
        Mode& mode = device(data).modes.emplace_back(Mode{proxy, &device(data), {}});
        kde_output_device_mode_v2_add_listener(proxy, &ofMode, &mode);
    }

    static void setEdid(void* data, kde_output_device_v2*, const char* text) {
        const QByteArray edid = QByteArray::fromBase64(text);
        device(data).told.edid.assign(edid.begin(), edid.end());
    }

    /// One change of the displays may be told by several of these.
    static void done(void* data, kde_output_device_v2*) {
        device(data).isWhole = true;
        device(data).owner->changed_();
    }

    static constexpr kde_output_device_v2_listener ofDevice{
        [](void* data, kde_output_device_v2*, std::int32_t x, std::int32_t y, std::int32_t,
           std::int32_t, std::int32_t, const char* make, const char* model,
           std::int32_t transform) {
            KdeOutput& output = device(data).told;
            output.place = {x, y};
            output.make = make;
            output.model = model;
            output.transform = transform;
        },
        [](void* data, kde_output_device_v2*, kde_output_device_mode_v2* mode) {
            device(data).current = mode;
        },
        addMode,
        done,
        [](void* data, kde_output_device_v2*, wl_fixed_t scale) {
            device(data).told.scale = wl_fixed_to_double(scale);
        },
        setEdid,
        [](void* data, kde_output_device_v2*, std::int32_t isEnabled) {
            device(data).told.isEnabled = isEnabled != 0;
        },
        [](void*, kde_output_device_v2*, const char*) {},
        [](void* data, kde_output_device_v2*, const char* serial) {
            device(data).told.serial = serial;
        },
        [](void*, kde_output_device_v2*, const char*) {},
        [](void*, kde_output_device_v2*, std::uint32_t) {},
        [](void*, kde_output_device_v2*, std::uint32_t) {},
        [](void*, kde_output_device_v2*, std::uint32_t) {},
        [](void*, kde_output_device_v2*, std::uint32_t) {},
        [](void* data, kde_output_device_v2*, const char* name) {
            device(data).told.connector = name;
        }};

    static constexpr kde_output_order_v1_listener ofOrder{
        [](void* data, kde_output_order_v1*, const char* name) {
            if (std::exchange(outputs(data).isOrderNew_, false))
                outputs(data).mainConnector_ = name;
        },
        [](void* data, kde_output_order_v1*) {
            outputs(data).isOrderNew_ = true;
            outputs(data).changed_();
        }};

    static void addGlobal(void* data, wl_registry* registry, std::uint32_t name,
                          const char* interface, std::uint32_t version) {
        constexpr std::uint32_t known = 2; // the first that tells connectors
        if (std::string_view(interface) == wl_output_interface.name)
            return outputs(data).sizes_.add(registry, name);
        if (std::string_view(interface) != kde_output_device_v2_interface.name)
            return;
        auto* proxy = static_cast<kde_output_device_v2*>(wl_registry_bind(
            registry, name, &kde_output_device_v2_interface, std::min(version, known)));
        Device& device = outputs(data).devices_.emplace_back(&outputs(data), proxy, name);
        kde_output_device_v2_add_listener(proxy, &ofDevice, &device);
    }

    static void removeGlobal(void* data, wl_registry*, std::uint32_t name) {
        outputs(data).sizes_.remove(name);
        const auto isGone = [name](const Device& device) { return device.told.id == name; };
        if (outputs(data).devices_.remove_if(isGone) != 0)
            outputs(data).changed_();
    }

    static constexpr wl_registry_listener ofRegistry{addGlobal, removeGlobal};
};

KdeOutputs::KdeOutputs(WaylandConnection& connection, std::function<void()> changed)
    : changed_(std::move(changed)),
      registry_(wl_display_get_registry(connection.display()), wl_registry_destroy),
      order_(connection.bind<kde_output_order_v1>(kde_output_order_v1_interface, 1),
             kde_output_order_v1_destroy),
      sizes_(connection, changed_) {
    wl_registry_add_listener(registry_.get(), &Listeners::ofRegistry, this);
    if (order_)
        kde_output_order_v1_add_listener(order_.get(), &Listeners::ofOrder, this);
}

KdeOutputs::~KdeOutputs() = default;

std::uint32_t KdeOutputs::numberOf(const KdeMode& mode) {
    const auto next = static_cast<std::uint32_t>(modeNumbers_.size() + 1);
    return modeNumbers_.try_emplace({mode.size.width, mode.size.height, mode.rate}, next)
        .first->second;
}

KdeState KdeOutputs::state() {
    KdeState state;
    for (const Device& device : devices_) {
        if (!device.isWhole)
            continue;
        KdeOutput& output = state.emplace_back(device.told);
        output.isMain = output.connector == mainConnector_;
        output.told = sizes_.sizeOf(output.connector);
        for (const Mode& mode : device.modes) {
            KdeMode told = mode.told;
            told.number = numberOf(told);
            if (mode.proxy == device.current)
                output.currentMode = told.number;
            if (output.mode(told.number) == nullptr)
                output.modes.push_back(told);
        }
    }
    return state;
}

bool KdeOutputs::write(kde_output_configuration_v2* configuration, const KdeState& before,
                       const KdeState& after) {
    bool hasChanges = false;
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto device = std::ranges::find_if(
            devices_, [&](const Device& candidate) { return candidate.told.id == after[i].id; });
        if (device == devices_.end() || after[i] == before[i])
            continue;
        hasChanges = true;
        if (after[i].currentMode != before[i].currentMode)
            kde_output_configuration_v2_mode(configuration, device->proxy,
                                             device->mode(after[i].currentMode));
        if (after[i].scale != before[i].scale) // else the one that is only told nearly stays
            kde_output_configuration_v2_scale(configuration, device->proxy,
                                              wl_fixed_from_double(after[i].scale));
        if (after[i].place != before[i].place)
            kde_output_configuration_v2_position(configuration, device->proxy, after[i].place.x,
                                                 after[i].place.y);
    }
    return hasChanges;
}

} // namespace tessary

#include "Linux/Sessions/Kde/ShownSizes.h"

#include <algorithm>
#include <utility>

#include <protocols/xdg-output-unstable-v1.h>

namespace tessary {

struct ShownSizes::Output {
    ShownSizes* owner = nullptr;
    std::uint32_t global = 0;
    wl_output* output = nullptr;
    zxdg_output_v1* proxy = nullptr;
    std::string connector{};
    std::optional<PixelSize> size{};

    Output(ShownSizes* sizes, std::uint32_t name, wl_output* announced)
        : owner(sizes),
          global(name),
          output(announced),
          proxy(zxdg_output_manager_v1_get_xdg_output(sizes->manager_.get(), announced)) {}
    ~Output() {
        zxdg_output_v1_destroy(proxy);
        wl_output_destroy(output);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
};

struct ShownSizes::Listener {
    static Output& output(void* data) { return *static_cast<Output*>(data); }

    static constexpr zxdg_output_v1_listener events{
        [](void*, zxdg_output_v1*, std::int32_t, std::int32_t) {},
        [](void* data, zxdg_output_v1*, std::int32_t width, std::int32_t height) {
            output(data).size = {width, height};
            output(data).owner->changed_();
        },
        [](void*, zxdg_output_v1*) {},
        [](void* data, zxdg_output_v1*, const char* name) { output(data).connector = name; },
        [](void*, zxdg_output_v1*, const char*) {}};
};

ShownSizes::ShownSizes(WaylandConnection& connection, std::function<void()> changed)
    : changed_(std::move(changed)),
      manager_(connection.bind<zxdg_output_manager_v1>(zxdg_output_manager_v1_interface,
                                                       ZXDG_OUTPUT_V1_NAME_SINCE_VERSION),
               zxdg_output_manager_v1_destroy) {}

ShownSizes::~ShownSizes() = default;

void ShownSizes::add(wl_registry* registry, std::uint32_t name) {
    if (!manager_)
        return;
    auto* announced =
        static_cast<wl_output*>(wl_registry_bind(registry, name, &wl_output_interface, 1));
    Output& output = outputs_.emplace_back(this, name, announced);
    zxdg_output_v1_add_listener(output.proxy, &Listener::events, &output);
}

void ShownSizes::remove(std::uint32_t name) {
    outputs_.remove_if([name](const Output& output) { return output.global == name; });
}

std::optional<PixelSize> ShownSizes::sizeOf(const std::string& connector) const {
    const auto output = std::ranges::find(outputs_, connector, &Output::connector);
    return output != outputs_.end() ? output->size : std::nullopt;
}

} // namespace tessary

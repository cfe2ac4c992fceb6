// bare_mutter_switcher: has prepared two layouts of the nested Mutter with two monitors, and sends
// the first one at ActivateAction "slot-one" and the second one at any other: as little as a
// program can do.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <systemd/sd-bus.h>

namespace {

constexpr const char* mutter = "org.gnome.Mutter.DisplayConfig";
constexpr const char* mutterPath = "/org/gnome/Mutter/DisplayConfig";

sd_bus* bus = nullptr;

struct Layout {
    const char* mode;
    std::int32_t width; ///< of the first monitor: the second one stands beside it
};

constexpr std::array<Layout, 2> layouts{{{"1024x768@60.000", 1024}, {"1280x720@60.000", 1280}}};

void check(int result, const char* what) {
    if (result >= 0)
        return;
    std::fprintf(stderr, "bare_mutter_switcher: %s: %s\n", what, std::strerror(-result));
    std::exit(EXIT_FAILURE);
}

std::uint32_t currentSerial() {
    sd_bus_message* reply = nullptr;
    check(
        sd_bus_call_method(bus, mutter, mutterPath, mutter, "GetCurrentState", nullptr, &reply, ""),
        "GetCurrentState");
    std::uint32_t serial = 0;
    check(sd_bus_message_read(reply, "u", &serial), "serial");
    sd_bus_message_unref(reply);
    return serial;
}

void send(std::uint32_t serial, const Layout& layout) {
    constexpr std::uint32_t temporary = 1;
    check(sd_bus_call_method_async(bus, nullptr, mutter, mutterPath, mutter, "ApplyMonitorsConfig",
                                   nullptr, nullptr, "uua(iiduba(ssa{sv}))a{sv}", serial, temporary,
                                   2, 0, 0, 1.0, 0, 1, 1, "LVDS1", layout.mode, 0, layout.width, 0,
                                   1.0, 0, 0, 1, "LVDS2", "800x600@60.000", 0, 0),
          "ApplyMonitorsConfig");
}

int activateAction(sd_bus_message* message, void* serial, sd_bus_error* /*error*/) {
    const char* action = nullptr;
    check(sd_bus_message_read(message, "s", &action), "action");
    send(*static_cast<std::uint32_t*>(serial),
         layouts[std::strcmp(action, "slot-one") == 0 ? 0 : 1]);
    return sd_bus_reply_method_return(message, "");
}

const std::array<sd_bus_vtable, 3> table{
    sd_bus_vtable SD_BUS_VTABLE_START(0),
    SD_BUS_METHOD("ActivateAction", "sava{sv}", "", activateAction, SD_BUS_VTABLE_UNPRIVILEGED),
    SD_BUS_VTABLE_END};

} // namespace

int main() {
    check(sd_bus_open_user(&bus), "bus");
    std::uint32_t serial = currentSerial();
    check(sd_bus_add_object_vtable(bus, nullptr, "/org/tessary/Tessary",
                                   "org.freedesktop.Application", table.data(), &serial),
          "object");
    check(sd_bus_request_name(bus, "org.tessary.Tessary", 0), "name");
    std::puts("ready");
    std::fflush(stdout);
    while (true) {
        const int handled = sd_bus_process(bus, nullptr);
        check(handled, "process");
        if (handled == 0)
            check(sd_bus_wait(bus, UINT64_MAX), "wait");
    }
}

#include "Linux/Desktop/Runtime/BusAnswer.h"

#include <cerrno>
#include <cstdint>
#include <memory>
#include <thread>

#include <systemd/sd-bus.h>

namespace tessary {

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr microseconds forever = microseconds::max();

struct Close {
    void operator()(sd_bus* bus) const { sd_bus_close_unref(bus); }
};

using Bus = std::unique_ptr<sd_bus, Close>;

/// Null when the address makes no sense or no program listens there.
Bus opened(const std::string& address, bool waitsForSocket) {
    sd_bus* made = nullptr;
    if (sd_bus_new(&made) < 0)
        return nullptr;
    Bus bus(made);
    const bool isOpen =
        sd_bus_set_address(made, address.c_str()) >= 0 && sd_bus_set_bus_client(made, 1) >= 0 &&
        sd_bus_set_watch_bind(made, waitsForSocket ? 1 : 0) >= 0 && sd_bus_start(made) >= 0;
    return isOpen ? std::move(bus) : nullptr;
}

/// Whether the bus answers a question, too, now that it has let us in.
BusAnswer answerAfterGreeting(sd_bus* bus, microseconds limit) {
    if (limit != forever)
        sd_bus_set_method_call_timeout(bus, static_cast<std::uint64_t>(limit.count()));
    const int result = sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", "GetId", nullptr, nullptr, "");
    return result >= 0 ? BusAnswer::given : BusAnswer::silence;
}

BusAnswer ask(const std::string& address, microseconds limit, bool waitsForSocket) {
    const Bus bus = opened(address, waitsForSocket);
    if (bus == nullptr)
        return BusAnswer::none;
    const auto start = Clock::now();
    while (sd_bus_is_ready(bus.get()) == 0) {
        int result = sd_bus_process(bus.get(), nullptr);
        const auto spent = std::chrono::duration_cast<microseconds>(Clock::now() - start);
        if (result == 0 && spent >= limit)
            return BusAnswer::silence;
        if (result == 0)
            result = sd_bus_wait(
                bus.get(), limit == forever ? UINT64_MAX
                                            : static_cast<std::uint64_t>((limit - spent).count()));
        if (result == -ETIMEDOUT) // the library's own limits
            return BusAnswer::silence;
        if (result < 0 && result != -EINTR)
            return BusAnswer::none;
    }
    return sd_bus_is_ready(bus.get()) > 0 ? answerAfterGreeting(bus.get(), limit) : BusAnswer::none;
}

} // namespace

BusAnswer askBus(const std::string& address, microseconds limit) {
    return ask(address, limit, false);
}

bool waitForBus(const std::string& address, int looks) {
    constexpr std::chrono::seconds pause{1};
    for (; looks > 0; --looks) {
        const auto next = Clock::now() + pause;
        if (ask(address, pause, true) == BusAnswer::given)
            return true;
        std::this_thread::sleep_until(next);
    }
    // The library drops a bus that has said nothing for a while, 90 seconds by itself.
    constexpr std::chrono::minutes isSilence{1};
    BusAnswer answer{};
    Clock::time_point start;
    do {
        start = Clock::now();
        answer = ask(address, forever, true);
    } while (answer == BusAnswer::silence ||
             (answer == BusAnswer::none && Clock::now() - start >= isSilence));
    return answer == BusAnswer::given;
}

} // namespace tessary

#include "Linux/Sessions/Gnome/WorkAreaPointer.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <map>

#include <protocols/xdg-shell.h>
#include <sys/mman.h>
#include <unistd.h>

namespace tessary {

namespace {

constexpr xdg_wm_base_listener shellListener{
    [](void* /*data*/, xdg_wm_base* shell, std::uint32_t serial) {
        xdg_wm_base_pong(shell, serial);
    }};

/// Transparent, of 2 × 2 points. Null when there is no memory.
wl_buffer* smallBuffer(wl_shm* memory) {
    constexpr int side = 2;
    constexpr int line = side * 4;
    const int file = memfd_create("tessary", MFD_CLOEXEC);
    if (file < 0 || ftruncate(file, off_t{side} * line) != 0)
        return nullptr;
    wl_shm_pool* pool = wl_shm_create_pool(memory, file, side * line);
    wl_buffer* buffer =
        wl_shm_pool_create_buffer(pool, 0, side, side, line, WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    close(file);
    return buffer;
}

/// The compositor's outputs and where each begins in the layout. They last as long as a question,
/// since each change of a display moves them.
class Outputs {
public:
    explicit Outputs(const std::vector<wl_output*>& outputs) {
        for (wl_output* output : outputs) {
            const auto place = origins_.try_emplace(output).first;
            wl_output_add_listener(output, &listener, &place->second);
        }
    }

    ~Outputs() {
        for (const auto& [output, origin] : origins_)
            wl_output_get_version(output) >= WL_OUTPUT_RELEASE_SINCE_VERSION
                ? wl_output_release(output)
                : wl_output_destroy(output);
    }

    Outputs(const Outputs&) = delete;
    Outputs& operator=(const Outputs&) = delete;

    PixelPoint originOf(wl_output* output) const { return origins_.at(output); }

private:
    static constexpr wl_output_listener listener{
        [](void* origin, wl_output*, std::int32_t x, std::int32_t y, std::int32_t, std::int32_t,
           std::int32_t, const char*, const char*, std::int32_t) {
            *static_cast<PixelPoint*>(origin) = {x, y};
        },
        [](void*, wl_output*, std::uint32_t, std::int32_t, std::int32_t, std::int32_t) {},
        [](void*, wl_output*) {},
        [](void*, wl_output*, std::int32_t) {},
        [](void*, wl_output*, const char*) {},
        [](void*, wl_output*, const char*) {}};

    std::map<wl_output*, PixelPoint> origins_;
};

PixelPoint centre(const PixelRect& frame) {
    return {frame.x + frame.width / 2, frame.y + frame.height / 2};
}

} // namespace

/// A window that is not shown until `show`.
class WorkAreaPointer::Window {
public:
    /// What the compositor has told of it.
    struct Answers {
        bool isConfigured = false; ///< from then on it may be shown
        std::optional<PixelSize> workArea;
        wl_output* output = nullptr; ///< that shows it
    };

    Window(wl_compositor* compositor, xdg_wm_base* shell)
        : surface_(wl_compositor_create_surface(compositor)),
          role_(xdg_wm_base_get_xdg_surface(shell, surface_)),
          toplevel_(xdg_surface_get_toplevel(role_)) {
        wl_surface_add_listener(surface_, &surfaceListener, &answers_);
        xdg_surface_add_listener(role_, &roleListener, &answers_);
        xdg_toplevel_add_listener(toplevel_, &toplevelListener, &answers_);
        xdg_toplevel_set_app_id(toplevel_, "org.tessary.Tessary");
        xdg_toplevel_set_title(toplevel_, "Tessary");
        wl_surface_commit(surface_);
    }

    ~Window() {
        xdg_toplevel_destroy(toplevel_);
        xdg_surface_destroy(role_);
        wl_surface_destroy(surface_);
        if (buffer_ != nullptr)
            wl_buffer_destroy(buffer_);
    }

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    const Answers& answers() const { return answers_; }

    void show(wl_shm* memory) {
        buffer_ = smallBuffer(memory);
        wl_surface_attach(surface_, buffer_, 0, 0);
        wl_surface_commit(surface_);
    }

private:
    static Answers& of(void* data) { return *static_cast<Answers*>(data); }

    static constexpr wl_surface_listener surfaceListener{
        [](void* answers, wl_surface*, wl_output* output) { of(answers).output = output; },
        [](void*, wl_surface*, wl_output*) {}};

    static constexpr xdg_surface_listener roleListener{
        [](void* answers, xdg_surface* role, std::uint32_t serial) {
            xdg_surface_ack_configure(role, serial);
            of(answers).isConfigured = true;
        }};

    static constexpr xdg_toplevel_listener toplevelListener{
        [](void*, xdg_toplevel*, std::int32_t, std::int32_t, wl_array*) {},
        [](void*, xdg_toplevel*) {},
        [](void* answers, xdg_toplevel*, std::int32_t width, std::int32_t height) {
            of(answers).workArea = {width, height};
        },
        [](void*, xdg_toplevel*, wl_array*) {}};

    wl_surface* surface_;
    xdg_surface* role_;
    xdg_toplevel* toplevel_;
    wl_buffer* buffer_ = nullptr;
    Answers answers_;
};

WorkAreaPointer::WorkAreaPointer(WaylandConnection& connection)
    : connection_(connection),
      queue_(wl_display_create_queue(connection.display()), wl_event_queue_destroy),
      compositor_(connection.bind<wl_compositor>(wl_compositor_interface, 4),
                  wl_compositor_destroy),
      memory_(connection.bind<wl_shm>(wl_shm_interface, 1), wl_shm_destroy),
      shell_(connection.bind<xdg_wm_base>(xdg_wm_base_interface, 4), xdg_wm_base_destroy) {
    for (void* proxy : {static_cast<void*>(compositor_.get()), static_cast<void*>(memory_.get()),
                        static_cast<void*>(shell_.get())})
        if (proxy != nullptr)
            wl_proxy_set_queue(static_cast<wl_proxy*>(proxy), queue_.get());
    if (shell_)
        xdg_wm_base_add_listener(shell_.get(), &shellListener, nullptr);
}

WorkAreaPointer::~WorkAreaPointer() = default;

std::optional<PixelPoint> WorkAreaPointer::find(const DisplayRecords& displays) {
    if (displays.size() == 1)
        return centre(displays.front().frame);
    if (!compositor_ || !memory_ || !shell_)
        return std::nullopt;
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::milliseconds(600);
    const auto comesInTime = [&](const std::function<bool()>& holds) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        return connection_.waitUntil(holds, static_cast<int>(left.count()), queue_.get());
    };
    Window window(compositor_.get(), shell_.get());
    const auto& answers = window.answers();
    if (!comesInTime([&] { return answers.isConfigured; }))
        return std::nullopt;
    if (const auto* display =
            answers.workArea ? displayOfWorkArea(displays, *answers.workArea) : nullptr)
        return centre(display->frame);
    const Outputs outputs(connection_.bindAll<wl_output>(wl_output_interface, 3, queue_.get()));
    window.show(memory_.get());
    if (!comesInTime([&] { return answers.output != nullptr; }))
        return std::nullopt;
    return outputs.originOf(answers.output);
}

const DisplayRecord* displayOfWorkArea(const DisplayRecords& displays, PixelSize workArea) {
    constexpr int panels = 8; // parts of a display of which panels take one at most
    std::array<int, 2> counts{};
    std::array<const DisplayRecord*, 2> found{}; // exactly as large, larger
    for (const DisplayRecord& display : displays) {
        const int width = display.frame.width - workArea.width;
        const int height = display.frame.height - workArea.height;
        if (width < 0 || height < 0 || width * panels > display.frame.width ||
            height * panels > display.frame.height)
            continue;
        const std::size_t kind = width == 0 && height == 0 ? 0 : 1;
        ++counts[kind];
        found[kind] = &display;
    }
    const std::size_t kind = counts[0] > 0 ? 0 : 1;
    return counts[kind] == 1 ? found[kind] : nullptr;
}

} // namespace tessary

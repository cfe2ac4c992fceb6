#include "Linux/Sessions/Wayland/DesktopSound.h"

#include "Platform/Foundation.h"

#include <string>
#include <utility>

#include <dlfcn.h>

namespace tessary {

namespace {

// Of canberra.h: 0 is success, a negative number an error.
using CreateContext = int (*)(void** context);
using Play = int (*)(void* context, std::uint32_t id, ...);

void* canberra() {
    static void* const library = dlopen("libcanberra.so.0", RTLD_NOW | RTLD_LOCAL);
    return library;
}

template <typename Function>
Function functionNamed(const char* name) {
    return canberra() != nullptr ? reinterpret_cast<Function>(dlsym(canberra(), name)) : nullptr;
}

/// Null when there is no library, or it refuses.
void* newContext() {
    void* context = nullptr;
    const auto create = functionNamed<CreateContext>("ca_context_create");
    return create != nullptr && create(&context) == 0 ? context : nullptr;
}

bool plays(void* context, const char* sound) {
    static const auto play = functionNamed<Play>("ca_context_play");
    constexpr const char* noMore = nullptr;
    return play != nullptr && play(context, 0, "event.id", sound, noMore) == 0;
}

} // namespace

void DesktopSound::alert() {
    if (!std::exchange(isTried_, true))
        context_ = newContext();
    if (context_ != nullptr && plays(context_, "bell"))
        return;
    if (!std::exchange(isReported_, true))
        NSLog("tessary: no alert can be heard: " +
              std::string(canberra() != nullptr ? "libcanberra plays no sound"
                                                : "libcanberra0 is not installed"));
}

} // namespace tessary

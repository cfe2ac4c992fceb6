#pragma once

#include <chrono>
#include <functional>

namespace desktop {

/// How long anything may take. Long, since it costs time only where something is broken.
inline constexpr std::chrono::seconds patience{30};

/// Handles what comes over the bus and from processes of our own, and asks `holds` at once, after
/// each of that, and some fifty times a second for what is not reported. False when it never held
/// within `patience`.
bool waitUntil(const std::function<bool()>& holds);

/// Has an application object, without whose loop Qt delivers nothing.
void needApplication();

} // namespace desktop

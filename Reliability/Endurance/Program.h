// The installed program, as the runs start and watch it.
#pragma once

#include "Desktop/Harness/Client.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"
#include "Desktop/Harness/Waiting.h"

#include <string>

namespace endurance {

using desktop::keys::f14;
using desktop::keys::f15;

/// The command that starts it.
desktop::Words program(const desktop::Home& home, const desktop::XServer& server,
                       const desktop::Bus& bus, const desktop::Words& arguments = {});

/// Waits until it has taken its keys. False when it never did.
bool isReady(desktop::Client& client);

/// Its anonymous memory in KiB.
long memoryOf(const desktop::ChildProcess& process);

long handlesOf(const desktop::ChildProcess& process);

/// Two displays side by side, each with modes of the sizes that the program chooses at first.
void connectDisplays(const desktop::XServer& server);

/// Moves the pointer to the left display and has the key change its mode. Milliseconds until it
/// had; a negative number when it never did.
double press(desktop::Client& client, std::uint8_t key);

} // namespace endurance

// Whether a message bus answers, found out without the toolkit, which would wait without a limit.
#pragma once

#include <chrono>
#include <string>

namespace tessary {

enum class BusAnswer {
    given,  ///< it lets clients in and answers them
    none,   ///< no program listens at the address
    silence ///< a program listens there, but does not answer
};

/// Opens a connection to the bus at this D-Bus address and closes it again. Waits for the bus
/// to let us in, and for its answer then, at most as long as `limit` says for each.
BusAnswer askBus(const std::string& address, std::chrono::microseconds limit);

/// Sleeps until a bus answers at this address. Looks once a second as many times as `looks` says;
/// after that it is told by the kernel of a socket that appears in the file system. False where
/// the kernel cannot tell, as for an abstract socket.
bool waitForBus(const std::string& address, int looks);

} // namespace tessary

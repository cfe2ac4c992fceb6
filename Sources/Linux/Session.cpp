#include "Linux/Session.h"

#include "Linux/HotKeys/HotKeyEvents.h"

#include <utility>

namespace tessary {

namespace {

Session* openSession = nullptr; // never destroyed: nothing of ours runs after main

} // namespace

bool Session::open() {
    auto connection = XConnection::open();
    if (!connection)
        return false;
    openSession = new Session(std::move(connection));
    return true;
}

Session* Session::current() {
    return openSession;
}

Session::Session(std::unique_ptr<XConnection> connection)
    : connection_(std::move(connection)), displays_(chooseDisplayDriver(*connection_)) {
    if (displays_->canGrabKeys())
        keys_ = std::make_unique<KeyGrabs>(*connection_, sendHotKeyPressed);
}

} // namespace tessary

#include "Platform/AppKit/NSSound.h"

#include "Linux/Session.h"

// The X bell: every desktop turns it into its own alert.
void NSSound::beep() {
    auto* session = tessary::Session::current();
    if (session == nullptr)
        return;
    constexpr std::int8_t usualVolume = 0;
    xcb_bell(session->connection().get(), usualVolume);
    xcb_flush(session->connection().get());
}

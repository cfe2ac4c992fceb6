#include "Platform/AppKit/NSSound.h"

#include "Linux/Session.h"

void NSSound::beep() {
    tessary::Session::current().alert();
}

// Pointer and keys of a session on Mutter, as a remote desktop would move and press them.
#pragma once

#include "Desktop/Harness/Panel.h"

#include <QDBusConnection>
#include <QString>

#include <cstdint>

namespace desktop {

class RemoteInput {
public:
    /// Throws when the compositor on the bus does not allow it.
    explicit RemoteInput(const Bus& bus);
    ~RemoteInput();

    /// Moves the pointer to a place of the whole layout, `y` being on the monitor.
    void movePointer(double x, double y) const;

    /// Presses or releases a key, by the kernel's code. The seat has a keyboard from the first key.
    void setKey(std::uint32_t key, bool isDown) const;

    RemoteInput(const RemoteInput&) = delete;
    RemoteInput& operator=(const RemoteInput&) = delete;

private:
    void notify(const char* method, const QVariantList& arguments) const;

    QString connectionName_;
    QDBusConnection connection_;
    QString session_; ///< its path
};

} // namespace desktop

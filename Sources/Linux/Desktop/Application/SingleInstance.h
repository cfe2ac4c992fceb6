// One Tessary per session bus and display server.
#pragma once

#include "Linux/Desktop/Runtime/BusObject.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <functional>
#include <optional>
#include <string>

namespace tessary {

/// The program as the bus knows it: the interface org.freedesktop.Application (Desktop Entry
/// Specification, "D-Bus Activation") under the name org.tessary.Tessary, which the first instance
/// on the bus has, and under a name for each display server, such as org.tessary.Tessary.x11__0.
class SingleInstance : public BusObject {
public:
    enum class Claim {
        first,     ///< both names are ours
        alone,     ///< the first instance runs on another display server, or no bus answers
        activated, ///< another instance runs and has been told
        refused,   ///< another instance runs and does not answer
    };

    SingleInstance();

    /// Takes the names, or tells the owner of one what the user has started the program for: an
    /// action, or just again. Needs no session. Waits for the bus, at most 15 seconds.
    Claim claim(const std::optional<QDBusConnection>& bus,
                const std::optional<std::string>& action);

    /// Takes the names on a bus that has come later. Those of another instance are left to it, with
    /// a log line.
    void join(QDBusConnection bus);

    /// Has `reopen` called from the event loop for each later start; the one start that made the
    /// bus launch this process is none.
    void setReopenHandler(std::function<void()> reopen) { reopen_ = std::move(reopen); }

    /// Has `perform` called from the event loop for each action that is asked for.
    void setActionHandler(std::function<void(const std::string&)> perform) {
        perform_ = std::move(perform);
    }

    /// The launch is over.
    void setLaunched() { isStartedByBus_ = false; }

private:
    QDBusMessage answerToActivation(const QDBusMessage& message);
    void activate();
    void perform(const QString& action);

    std::function<void()> reopen_;
    std::function<void(const std::string&)> perform_;
    bool isStartedByBus_ = false; ///< by an activation that is still to come
};

} // namespace tessary

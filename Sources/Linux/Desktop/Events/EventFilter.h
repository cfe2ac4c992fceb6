#pragma once

#include <QGuiApplication>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QWindow>

#include <set>

namespace tessary {

/// Shows the events of the program's own windows, not those of the update framework's, to the
/// program's monitors before the toolkit acts on them. Installed only while there is a monitor, and
/// then until the keys whose press a monitor has swallowed are released and another key is pressed.
class EventFilter : public QObject {
public:
    /// Belongs to the application.
    explicit EventFilter(QGuiApplication& application);

    /// To be called when a monitor was added or removed.
    void monitorsChanged();

    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    struct Release {
        quint32 key = 0; ///< the display server's code
        quint64 time = 0;
        bool wasSwallowed = false;
    };

    bool swallows(QWindow& window, QEvent& event);
    bool swallowsKey(QKeyEvent& event, bool isWatched);
    bool swallowsPress(const QKeyEvent& event, bool isWatched);
    bool swallowsRelease(const QKeyEvent& event, bool isWatched);
    bool isTaken(const QKeyEvent& event, bool isWatched) const;
    bool isRepetition(const QKeyEvent& event) const;
    void focusChanged(QWindow* window);
    void grabKeyboardFor(QWindow* window);

    QGuiApplication& application_;
    QPointer<QWindow> grabbing_;  ///< has the keyboard for itself
    std::set<quint32> swallowed_; ///< keys that are down, by the display server's codes
    Release lastRelease_;
};

} // namespace tessary

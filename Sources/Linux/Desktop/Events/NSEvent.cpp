#include "Platform/AppKit/NSEvent.h"
#include "Linux/Desktop/Events/EventFilter.h"

#include <QPointer>

// Without a loop that has windows there are no events to show.
void NSEventMonitorsChanged() {
    static QPointer<tessary::EventFilter> filter; // gone with its application
    auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    if (application == nullptr)
        return;
    if (filter == nullptr)
        filter = new tessary::EventFilter(*application);
    filter->monitorsChanged();
}

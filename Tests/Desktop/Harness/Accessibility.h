// A screen reader: what the desktop tells those who do not see it, and what they do with it.
#pragma once

#include "Desktop/Harness/ChildProcess.h"
#include "Desktop/Harness/Panel.h"
#include "Desktop/Harness/Session.h"

#include <QDBusConnection>
#include <QString>

#include <string>

namespace desktop {

class ScreenReader {
public:
    /// Starts the desktop's accessibility services for the programs on `bus`. What is started ends
    /// with this object.
    ScreenReader(const Home& home, const Bus& bus);
    ~ScreenReader();

    /// What can be seen of the program, line by line: role and name, behind "=" the chosen entry,
    /// in brackets the description, and states. What only arranges others is left out.
    std::string shown() const;

    /// Does what the first control with this role and name is for. Throws when there is none.
    void act(const std::string& control) const;

    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;

private:
    ChildProcess services_;
    QString connectionName_;
    QDBusConnection connection_;
};

} // namespace desktop

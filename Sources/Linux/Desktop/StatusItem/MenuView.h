// Menu and icon drawn by ourselves, for panels that leave that to us. Needs a loop with windows.
#pragma once

#include "Platform/AppKit/NSMenu.h"

#include <QIcon>
#include <QMenu>

#include <memory>
#include <string>

namespace tessary {

/// The symbol in all its sizes.
QIcon symbolIcon(const std::string& symbol);

/// A menu on the screen, built anew each time it opens.
class MenuView {
public:
    explicit MenuView(std::shared_ptr<NSMenu> menu);

    QMenu& widget() { return widget_; }

private:
    void rebuild();

    std::shared_ptr<NSMenu> menu_;
    QMenu widget_;
};

} // namespace tessary

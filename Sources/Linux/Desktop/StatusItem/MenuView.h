#pragma once

#include "Platform/AppKit/NSMenu.h"

#include <QMenu>

#include <memory>

namespace tessary {

/// A menu that we draw ourselves, for panels that leave that to us. Built anew each time it opens.
/// Needs a loop with windows.
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

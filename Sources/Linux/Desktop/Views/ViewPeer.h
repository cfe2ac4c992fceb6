#pragma once

#include "Platform/AppKit/NSView.h"

#include <QPointer>
#include <QWidget>

/// The widget that shows the view belongs to its parent widget and may be gone before the view.
struct NSView::Peer {
    CGRect frame;             ///< as long as there is no widget
    QPointer<QWidget> widget; ///< null before `widgetOf`, and when the widget is gone
};

// Widgets at their places in a box layout. A later version of a form finds them there again.
#pragma once

#include "Platform/AppKit/Forms.h"

#include <QBoxLayout>
#include <QString>
#include <QWidget>

namespace tessary {

/// The layout's widget at `place`. Null when there is none.
QWidget* existingAt(const QBoxLayout& layout, int place);

/// Puts `widget`, which is new, at `place` instead of what stands there.
void putAt(QBoxLayout& layout, int place, QWidget* widget);

/// Removes the widgets from `place` on. They are deleted later, since one of them may be what the
/// user has just clicked.
void discardFrom(QBoxLayout& layout, int place);

/// The layout's widget at `place`: what stands there if it is of that class, else a new one.
template <typename Widget>
Widget* widgetAt(QBoxLayout& layout, int place) {
    auto* widget = dynamic_cast<Widget*>(existingAt(layout, place));
    if (widget == nullptr) {
        widget = new Widget(layout.parentWidget());
        putAt(layout, place, widget);
    }
    return widget;
}

/// Has the layout's widget at `place` show `view`. Screen readers call controls without a text of
/// their own `rowLabel`.
void renderAt(QBoxLayout& layout, int place, const Forms::View& view, const QString& rowLabel);

/// Has the layout's widgets show these views and no others.
void renderAll(QBoxLayout& layout, const std::vector<Forms::View>& views, const QString& rowLabel);

} // namespace tessary

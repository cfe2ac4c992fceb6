// The widgets that show the program's own views. Need a loop with windows.
#pragma once

#include "Platform/AppKit/NSView.h"

#include <QWidget>

#include <memory>

namespace tessary {

/// Makes the widget that shows `view`, at the view's intrinsic size, in `parent`, which owns it.
/// The widget owns the view, too. A view has one widget; of several the last counts.
QWidget* widgetOf(const std::shared_ptr<NSView>& view, QWidget* parent);

/// The widget that shows `view`. Null when there is none, or no more.
QWidget* existingWidget(const NSView& view);

class ViewWidget : public QWidget {
public:
    ViewWidget(std::shared_ptr<NSView> view, QWidget* parent);

    /// Does what a click into the middle of the view does. The program's monitors see it first.
    void click();

    /// The texts that the view shows.
    const QString& texts() const { return texts_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void setTexts(const QString& texts);
    void drawFocusRing(QPainter& painter);

    std::shared_ptr<NSView> view_;
    QString texts_;
    bool showsFocus_ = false; ///< the focus came by the keyboard
};

} // namespace tessary

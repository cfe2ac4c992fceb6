#include "Linux/Desktop/Views/ViewWidget.h"

#include "Linux/Desktop/Events/MouseEvents.h"
#include "Linux/Desktop/Views/DrawingContext.h"
#include "Linux/Desktop/Views/ViewPeer.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>

#include <utility>

namespace tessary {

namespace {

/// How assistive technologies see a view: as a button, with the name that its widget was given and
/// the texts that it shows as description.
class ViewAccessible : public QAccessibleWidget {
public:
    explicit ViewAccessible(ViewWidget& widget)
        : QAccessibleWidget(&widget, QAccessible::Button), widget_(widget) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Description ? widget_.texts() : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        if (name == pressAction())
            widget_.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    ViewWidget& widget_; ///< deletes this object when it is deleted
};

QAccessibleInterface* viewAccessible(const QString& /*className*/, QObject* object) {
    auto* widget = dynamic_cast<ViewWidget*>(object);
    return widget != nullptr ? new ViewAccessible(*widget) : nullptr;
}

} // namespace

QWidget* widgetOf(const std::shared_ptr<NSView>& view, QWidget* parent) {
    QAccessible::installFactory(viewAccessible); // more than once does no harm
    auto* widget = new ViewWidget(view, parent);
    view->peer().widget = widget;
    return widget;
}

QWidget* existingWidget(const NSView& view) {
    return view.peer().widget;
}

// Input methods stay off, as they are in a plain widget: a view that waits for keys gets all.
ViewWidget::ViewWidget(std::shared_ptr<NSView> view, QWidget* parent)
    : QWidget(parent), view_(std::move(view)) {
    const auto [width, height] = view_->intrinsicContentSize();
    setFixedSize(qCeil(width), qCeil(height));
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(view_->acceptsFirstResponder() ? Qt::StrongFocus : Qt::NoFocus);
}

void ViewWidget::click() {
    const auto view = view_; // the action may delete this widget
    const NSEvent event = clickInto(*this);
    if (NSEventSendToMonitors(event) == NSEvent::Passage::passOn)
        view->mouseDown(event);
}

void ViewWidget::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    {
        DrawingContext context(painter, *this);
        const QRect dirty = event->rect();
        view_->draw({{double(dirty.x()), double(height() - dirty.y() - dirty.height())},
                     {double(dirty.width()), double(dirty.height())}});
        setTexts(context.texts());
    }
    const bool waitsForKeys = NSEventHasMonitor(NSEventMaskFromType(NSEventType::keyDown));
    if (hasFocus() && showsFocus_ && !waitsForKeys) // the view shows that itself
        drawFocusRing(painter);
}

void ViewWidget::setTexts(const QString& texts) {
    if (std::exchange(texts_, texts) == texts)
        return;
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void ViewWidget::drawFocusRing(QPainter& painter) {
    constexpr double inset = 1; // on top of the line that views draw around themselves
    constexpr double radius = 5.5;
    painter.setPen(QPen(palette().color(QPalette::WindowText), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

void ViewWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const auto view = view_;
    const NSEvent click = mouseEvent(NSEventType::leftMouseDown, *window(), event->scenePosition(),
                                     event->modifiers());
    if (isActiveWindow() || view->acceptsFirstMouse(click))
        view->mouseDown(click);
}

void ViewWidget::keyPressEvent(QKeyEvent* event) {
    const bool activates = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                           event->key() == Qt::Key_Enter;
    if (!activates)
        event->ignore();
    else if (!event->isAutoRepeat())
        click();
}

void ViewWidget::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
        showsFocus_ = reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
                      reason == Qt::ShortcutFocusReason;
    QWidget::focusInEvent(event);
}

} // namespace tessary

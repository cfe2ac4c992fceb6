#include "Linux/Desktop/Forms/FormWidget.h"

#include "Linux/Desktop/Forms/Rendering.h"
#include "Linux/Desktop/Forms/SectionWidget.h"
#include "Linux/Desktop/Views/Scaling.h"

#include <QAccessibleWidget>
#include <QEvent>

#include <utility>

namespace tessary {

namespace {

constexpr int margin = 16;
constexpr int betweenSections = 18;

/// Lets assistive technologies see sections as groups, and windows as windows. To the toolkit every
/// plain QWidget is a mere container, which screen readers leave out.
QAccessibleInterface* formAccessible(const QString& className, QObject* object) {
    auto* widget = className == u"QWidget" ? qobject_cast<QWidget*>(object) : nullptr;
    if (dynamic_cast<SectionWidget*>(widget) != nullptr)
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    if (widget != nullptr && widget->windowType() == Qt::Window)
        return new QAccessibleWidget(widget, QAccessible::Window);
    return nullptr;
}

} // namespace

FormWidget::FormWidget(QWidget* parent) : QWidget(parent) {
    QAccessible::installFactory(formAccessible); // more than once does no harm
}

void FormWidget::render(Forms::Form form) {
    form_ = std::move(form);
    mnemonics_ = Mnemonics(form_);
    const int around = scaled(margin, *this);
    layout_.setContentsMargins(around, around, around, around);
    layout_.setSpacing(scaled(betweenSections, *this));
    int place = 0;
    for (const Forms::Section& section : form_.sections)
        widgetAt<SectionWidget>(layout_, place++)
            ->render(section, scaled(form_.width, *this) - 2 * around);
    discardFrom(layout_, place);
    fit();
}

bool FormWidget::event(QEvent* event) {
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest)
        fit();
    return isHandled;
}

/// Sizes and shades of texts depend on the desktop's font and palette, which the user may change.
/// Queued, since the widgets inside get a new palette after this one.
void FormWidget::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        QMetaObject::invokeMethod(
            this, [this] { render(form_); }, Qt::QueuedConnection);
}

void FormWidget::fit() {
    const int width = scaled(form_.width, *this);
    setFixedSize(width, layout_.hasHeightForWidth() ? layout_.totalHeightForWidth(width)
                                                    : layout_.totalSizeHint().height());
}

} // namespace tessary

#include "Linux/Desktop/Forms/FormWidget.h"

#include "Linux/Desktop/Forms/FormAccessible.h"
#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/Rendering.h"
#include "Linux/Desktop/Forms/SectionWidget.h"

#include <QEvent>

#include <utility>

namespace tessary {

namespace {

constexpr int margin = 16;
constexpr int betweenSections = 18;

} // namespace

FormWidget::FormWidget(QWidget* parent) : QWidget(parent) {
    installFormAccessible();
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

/// Sizes and shades of texts are derived from the desktop's, which the user may change. The widgets
/// inside are told of a new palette after this one.
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

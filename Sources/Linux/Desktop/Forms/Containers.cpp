#include "Linux/Desktop/Forms/Containers.h"

#include "Linux/Desktop/Forms/Controls.h"
#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/Rendering.h"
#include "Linux/Desktop/Symbols/SymbolIcon.h"
#include "Linux/Desktop/Views/Colours.h"
#include "Linux/Desktop/Views/Scaling.h"
#include "Linux/Desktop/Views/ViewWidget.h"

#include <QPainter>

namespace tessary {

namespace {

constexpr int betweenSymbolAndTitle = 6;
constexpr int toolkitsOwn = -1; // spacing of a QBoxLayout that follows the style

} // namespace

StackWidget::StackWidget(QWidget* parent) : QWidget(parent) {}

/// In a row without a label the texts name the controls beside them.
void StackWidget::render(const Forms::Stack& stack, const QString& rowLabel) {
    const bool isRow = stack.axis == Forms::Axis::horizontal;
    const bool hasOwnLabel = isRow && rowLabel.isEmpty();
    layout_.setDirection(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layout_.setSpacing(stack.spacing ? scaled(*stack.spacing, *this) : toolkitsOwn);
    layout_.setContentsMargins(0, scaled(stack.topPadding, *this), 0, 0);
    renderAll(layout_, stack.views, hasOwnLabel ? wordsOf(stack) : rowLabel);
    updateGeometry(); // at once: the layout around is measured before the next event
}

SymbolWidget::SymbolWidget(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolWidget::setSymbol(const std::string& symbol, const QColor& colour) {
    setFixedSize(fontMetrics().height(), fontMetrics().height());
    if (symbol_ == symbol && colour_ == colour)
        return;
    symbol_ = symbol;
    colour_ = colour;
    icon_ = symbolIcon(symbol, colour);
    update();
}

/// The largest picture, scaled to the pixels of the screen: most font sizes have no picture of
/// their own.
void SymbolWidget::paintEvent(QPaintEvent* /*event*/) {
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    const auto sizes = icon_.availableSizes();
    if (sizes.isEmpty()) // an unknown symbol
        return;
    QPainter(this).drawPixmap(
        rect(),
        icon_.pixmap(sizes.last()).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

LabelWidget::LabelWidget(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.addWidget(&symbol_, 0, Qt::AlignTop);
}

void LabelWidget::render(const Forms::Label& label, const QString& rowLabel) {
    const QColor colour = label.imageColor ? colourOf(*label.imageColor, palette())
                                           : palette().color(QPalette::WindowText);
    layout_.setSpacing(scaled(betweenSymbolAndTitle, *this));
    symbol_.setSymbol(label.systemImage, colour);
    renderAt(layout_, 1, label.title.front(), rowLabel);
    layout_.setStretch(1, 1);
    updateGeometry();
}

LabeledContentWidget::LabeledContentWidget(QWidget* parent) : LabeledRow(parent) {}

void LabeledContentWidget::render(const Forms::LabeledContent& row, const QString& /*rowLabel*/) {
    columns().setSpacing(scaled(betweenLabelAndContent, *this));
    renderAt(columns(), 0, row.label.front(), QString());
    renderAt(columns(), 1, row.content.front(), wordsOf(row.label.front()));
    setBuddy(row);
    columns().setStretch(0, isFilled() ? 0 : 1); // the content ends at the trailing edge
    updateGeometry();
}

/// A picker without a label of its own is reached by the row's mnemonic.
void LabeledContentWidget::setBuddy(const Forms::LabeledContent& row) {
    auto* label = columns().itemAt(0)->widget()->findChild<TextLabel*>();
    auto* box = columns().itemAt(1)->widget()->findChild<PickerBox*>();
    if (label == nullptr || box == nullptr || label->buddy() == box)
        return;
    label->setBuddy(box);
    renderAt(columns(), 0, row.label.front(), QString());
}

SpacerWidget::SpacerWidget(QWidget* parent) : QWidget(parent) {
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    policy.setHorizontalStretch(1);
    policy.setVerticalStretch(1);
    setSizePolicy(policy);
}

HostedViewWidget::HostedViewWidget(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    layout_.setContentsMargins(0, 0, 0, 0);
}

void HostedViewWidget::render(const Forms::HostedView& hosted, const QString& rowLabel) {
    if (view_ == nullptr) {
        view_ = hosted.make();
        widget_ = widgetOf(view_, this);
        layout_.addWidget(widget_);
        widget_->show();
    }
    hosted.update(view_);
    const auto [width, height] = view_->intrinsicContentSize();
    widget_->setFixedSize(scaled(width, *this), scaled(height, *this));
    widget_->setAccessibleName(rowLabel);
    widget_->setToolTip(localized(view_->toolTip()));
    updateGeometry();
}

} // namespace tessary

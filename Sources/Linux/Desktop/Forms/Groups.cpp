#include "Linux/Desktop/Forms/Groups.h"

#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/Rendering.h"
#include "Linux/Desktop/SymbolIcon.h"
#include "Linux/Desktop/Views/Colours.h"
#include "Linux/Desktop/Views/ViewWidget.h"

#include <QPainter>

#include <algorithm>

namespace tessary {

namespace {

constexpr int betweenSymbolAndTitle = 6;
constexpr int symbolSize = 16;
constexpr int betweenLabelAndContent = 12;
constexpr int toolkitsOwn = -1; // spacing of a QBoxLayout that follows the style

} // namespace

StackWidget::StackWidget(QWidget* parent) : QWidget(parent) {}

/// A text beside controls says what they are about, where no label of the row does.
void StackWidget::render(const Forms::Stack& stack, const QString& rowLabel) {
    const bool isRow = stack.axis == Forms::Axis::horizontal;
    const bool hasOwnLabel = isRow && rowLabel.isEmpty();
    layout_.setDirection(isRow ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    layout_.setSpacing(stack.spacing ? static_cast<int>(*stack.spacing) : toolkitsOwn);
    layout_.setContentsMargins(0, static_cast<int>(stack.topPadding), 0, 0);
    renderAll(layout_, stack.views, hasOwnLabel ? wordsOf(stack) : rowLabel);
    updateGeometry(); // tells the layout around, which is measured before the next event
}

SymbolWidget::SymbolWidget(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SymbolWidget::setSymbol(const std::string& symbol, const QColor& colour) {
    if (symbol_ == symbol && colour_ == colour)
        return;
    symbol_ = symbol;
    colour_ = colour;
    icon_ = symbolIcon(symbol, colour);
    setFixedSize(symbolSize, std::max(symbolSize, fontMetrics().height()));
    update();
}

/// Drawn anew each time, so that it is sharp on a screen of any density.
void SymbolWidget::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    icon_.paint(&painter, rect());
}

LabelWidget::LabelWidget(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(betweenSymbolAndTitle);
    layout_.addWidget(&symbol_, 0, Qt::AlignTop);
}

void LabelWidget::render(const Forms::Label& label, const QString& rowLabel) {
    const QColor colour = label.imageColor ? colourOf(*label.imageColor, palette())
                                           : palette().color(QPalette::WindowText);
    symbol_.setSymbol(label.systemImage, colour);
    renderAt(layout_, 1, label.title.front(), rowLabel);
    layout_.setStretch(1, 1);
    updateGeometry();
}

LabeledContentWidget::LabeledContentWidget(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(betweenLabelAndContent);
}

void LabeledContentWidget::render(const Forms::LabeledContent& row, const QString& /*rowLabel*/) {
    renderAt(layout_, 0, row.label.front(), QString());
    renderAt(layout_, 1, row.content.front(), wordsOf(row.label.front()));
    const bool fillsRow = layout_.itemAt(1)->expandingDirections().testFlag(Qt::Horizontal);
    layout_.setStretch(0, fillsRow ? 0 : 1); // the content ends at the trailing edge
    updateGeometry();
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
    widget_->setFixedSize(qCeil(width * pointSize(*this)), qCeil(height * pointSize(*this)));
    widget_->setAccessibleName(rowLabel);
    updateGeometry();
}

} // namespace tessary

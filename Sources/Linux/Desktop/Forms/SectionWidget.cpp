#include "Linux/Desktop/Forms/SectionWidget.h"

#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/LabeledRow.h"
#include "Linux/Desktop/Forms/Rendering.h"
#include "Linux/Desktop/Views/Colours.h"
#include "Linux/Desktop/Views/Scaling.h"

#include <QPainter>

#include <cmath>

namespace tessary {

namespace {

constexpr int inset = 12; // of texts from the panel's edge
constexpr int rowPadding = 8;
constexpr int lineWidth = 1;
constexpr int aroundPanel = 6;

/// Moved onto whole pixels of the screen, for sharp edges also at a scale of 1.5.
QRectF onPixels(const QPainter& painter, const QRectF& rectangle) {
    const QTransform toScreen = painter.deviceTransform();
    return toScreen.inverted().mapRect(QRectF(toScreen.mapRect(rectangle).toRect()));
}

void drawPanel(QPainter& painter, const QRectF& outside, double thickness, const QColor& panel,
               const QColor& line) {
    constexpr double radius = 8;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(line);
    painter.drawRoundedRect(outside, radius, radius);
    painter.setBrush(panel);
    const QRectF inside = outside.adjusted(thickness, thickness, -thickness, -thickness);
    painter.drawRoundedRect(inside, radius - thickness, radius - thickness);
}

} // namespace

RowsPanel::RowsPanel(QWidget* parent) : QWidget(parent) {}

void RowsPanel::render(const std::vector<Forms::View>& rows, int width) {
    const int side = scaled(inset, *this);
    const int padding = scaled(rowPadding, *this);
    layout_.setContentsMargins(side, padding, side, padding);
    layout_.setSpacing(2 * padding + lineWidth);
    renderAll(layout_, rows, QString());
    std::vector<LabeledRow*> labeled;
    for (int place = 0; place < layout_.count(); ++place)
        if (auto* row = dynamic_cast<LabeledRow*>(existingAt(layout_, place)))
            labeled.push_back(row);
    alignLabels(labeled, width - 2 * side);
    updateGeometry();
    update();
}

void RowsPanel::paintEvent(QPaintEvent* /*event*/) {
    const QColor panel = panelColour(palette());
    const QColor line = dividerColour(palette());
    const double thickness = std::floor(devicePixelRatioF()) / devicePixelRatioF();
    QPainter painter(this);
    drawPanel(painter, onPixels(painter, rect()), thickness, panel, line);
    for (int place = 1; place < layout_.count(); ++place) {
        const int y = existingAt(layout_, place)->y() - scaled(rowPadding, *this) - lineWidth;
        const int side = scaled(inset, *this);
        QRectF separator = onPixels(painter, QRectF(side, y, width() - 2 * side, lineWidth));
        separator.setHeight(thickness);
        painter.fillRect(separator, line);
    }
}

SectionWidget::SectionWidget(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(0, 0, 0, 0);
    header_.setBold(true);
    layout_.addWidget(&header_);
    layout_.addWidget(&panel_);
}

void SectionWidget::render(const Forms::Section& section, int width) {
    layout_.setSpacing(scaled(aroundPanel, *this));
    header_.setContentsMargins(scaled(inset, *this), 0, scaled(inset, *this), 0);
    header_.setVisible(section.header.has_value());
    if (section.header)
        header_.render(*section.header);
    setAccessibleName(section.header ? wordsOf(*section.header) : QString());
    setAccessibleDescription(section.footer.empty() ? QString() : wordsOf(section.footer.front()));
    panel_.render(section.rows, width);
    renderFooter(section.footer);
    updateGeometry();
}

void SectionWidget::renderFooter(const std::vector<Forms::View>& footer) {
    constexpr int place = 2;
    if (footer.empty()) {
        discardFrom(layout_, place);
        return;
    }
    renderAt(layout_, place, footer.front(), QString());
    existingAt(layout_, place)
        ->setContentsMargins(scaled(inset, *this), 0, scaled(inset, *this), 0);
}

} // namespace tessary

#include "Linux/Desktop/Forms/SectionWidget.h"

#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/Rendering.h"

#include <QPainter>

#include <cmath>

namespace tessary {

namespace {

constexpr int inset = 12; // of texts from the panel's edge
constexpr int rowPadding = 8;
constexpr int lineWidth = 1;
constexpr int aroundPanel = 6;

QColor mixed(const QColor& colour, const QColor& other, float share) {
    const auto mix = [share](float a, float b) { return a + (b - a) * share; };
    return QColor::fromRgbF(mix(colour.redF(), other.redF()), mix(colour.greenF(), other.greenF()),
                            mix(colour.blueF(), other.blueF()));
}

/// A little lighter than the window. Dark desktops have a base that is darker, on which the base of
/// check boxes would not be seen.
QColor panelColour(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    const QColor window = palette.color(QPalette::Window);
    constexpr float lighter = 0.06F;
    return base.lightness() >= window.lightness()
               ? base
               : mixed(window, palette.color(QPalette::WindowText), lighter);
}

/// Moved onto whole pixels of the screen, for sharp edges also where a point is 1.5 of them.
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

RowsPanel::RowsPanel(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(inset, rowPadding, inset, rowPadding);
    layout_.setSpacing(2 * rowPadding + lineWidth);
}

void RowsPanel::render(const std::vector<Forms::View>& rows) {
    renderAll(layout_, rows, QString());
    updateGeometry();
    update();
}

void RowsPanel::paintEvent(QPaintEvent* /*event*/) {
    const QColor panel = panelColour(palette());
    const QColor line = mixed(panel, palette().color(QPalette::WindowText), 0.15F);
    const double thickness = std::floor(devicePixelRatioF()) / devicePixelRatioF();
    QPainter painter(this);
    drawPanel(painter, onPixels(painter, rect()), thickness, panel, line);
    for (int place = 1; place < layout_.count(); ++place) {
        const int y = existingAt(layout_, place)->y() - rowPadding - lineWidth;
        QRectF separator = onPixels(painter, QRectF(inset, y, width() - 2 * inset, lineWidth));
        separator.setHeight(thickness);
        painter.fillRect(separator, line);
    }
}

SectionWidget::SectionWidget(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(aroundPanel);
    header_.setBold(true);
    header_.setContentsMargins(inset, 0, inset, 0);
    layout_.addWidget(&header_);
    layout_.addWidget(&panel_);
}

void SectionWidget::render(const Forms::Section& section) {
    header_.setVisible(section.header.has_value());
    if (section.header)
        header_.render(*section.header);
    setAccessibleName(section.header ? wordsOf(*section.header) : QString());
    setAccessibleDescription(section.footer.empty() ? QString() : wordsOf(section.footer.front()));
    panel_.render(section.rows);
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
    existingAt(layout_, place)->setContentsMargins(inset, 0, inset, 0);
}

} // namespace tessary

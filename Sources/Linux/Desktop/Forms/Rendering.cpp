#include "Linux/Desktop/Forms/Rendering.h"

#include "Linux/Desktop/Forms/Containers.h"
#include "Linux/Desktop/Forms/Controls.h"
#include "Linux/Desktop/Forms/TextLabel.h"

#include <variant>

namespace tessary {

namespace {

/// The widget for each part of a form. Only declared: the result type is what counts.
struct WidgetFor {
    static TextLabel type(const Forms::Text& text);
    static TextLabel type(const Forms::FormattedText& text);
    static StackWidget type(const Forms::Stack& stack);
    static LabelWidget type(const Forms::Label& label);
    static PickerWidget type(const Forms::Picker& picker);
    static ToggleWidget type(const Forms::Toggle& toggle);
    static ButtonWidget type(const Forms::Button& button);
    static SpacerWidget type(const Forms::Spacer& spacer);
    static LabeledContentWidget type(const Forms::LabeledContent& row);
    static HostedViewWidget type(const Forms::HostedView& hosted);
};

void discard(QWidget& widget) {
    widget.hide(); // now: the layout is measured before the widget is deleted
    widget.deleteLater();
}

/// Widgets beside each other are centred vertically. Widgets below each other begin at the leading
/// edge, and those that can grow take the whole width.
Qt::Alignment alignmentIn(const QBoxLayout& layout, const QWidget& widget) {
    if (layout.direction() == QBoxLayout::LeftToRight)
        return Qt::AlignVCenter;
    const bool grows =
        (widget.sizePolicy().horizontalPolicy() & QSizePolicy::GrowFlag) == QSizePolicy::GrowFlag;
    return grows ? Qt::Alignment() : Qt::AlignLeading;
}

} // namespace

QWidget* existingAt(const QBoxLayout& layout, int place) {
    const QLayoutItem* item = layout.itemAt(place);
    return item != nullptr ? item->widget() : nullptr;
}

void putAt(QBoxLayout& layout, int place, QWidget* widget) {
    if (QWidget* before = existingAt(layout, place)) {
        layout.removeWidget(before);
        discard(*before);
    }
    layout.insertWidget(place, widget, 0, alignmentIn(layout, *widget));
    widget->show(); // now, since a layout ignores hidden widgets
}

void discardFrom(QBoxLayout& layout, int place) {
    while (QWidget* widget = existingAt(layout, place)) {
        layout.removeWidget(widget);
        discard(*widget);
    }
}

void renderAt(QBoxLayout& layout, int place, const Forms::View& view, const QString& rowLabel) {
    std::visit(
        [&](const auto& content) {
            widgetAt<decltype(WidgetFor::type(content))>(layout, place)->render(content, rowLabel);
        },
        view.content);
}

void renderAll(QBoxLayout& layout, const std::vector<Forms::View>& views, const QString& rowLabel) {
    int place = 0;
    for (const Forms::View& view : views)
        renderAt(layout, place++, view, rowLabel);
    discardFrom(layout, place);
}

} // namespace tessary

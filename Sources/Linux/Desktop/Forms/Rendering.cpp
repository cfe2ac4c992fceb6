#include "Linux/Desktop/Forms/Rendering.h"

#include "Linux/Desktop/Forms/Controls.h"
#include "Linux/Desktop/Forms/Groups.h"
#include "Linux/Desktop/Forms/TextLabel.h"

#include <variant>

namespace tessary {

namespace {

template <typename Content>
struct WidgetOf;

template <>
struct WidgetOf<Forms::Text> {
    using Type = TextLabel;
};
template <>
struct WidgetOf<Forms::FormattedText> {
    using Type = TextLabel;
};
template <>
struct WidgetOf<Forms::Stack> {
    using Type = StackWidget;
};
template <>
struct WidgetOf<Forms::Label> {
    using Type = LabelWidget;
};
template <>
struct WidgetOf<Forms::Picker> {
    using Type = PickerWidget;
};
template <>
struct WidgetOf<Forms::Toggle> {
    using Type = ToggleWidget;
};
template <>
struct WidgetOf<Forms::Button> {
    using Type = ButtonWidget;
};
template <>
struct WidgetOf<Forms::Spacer> {
    using Type = SpacerWidget;
};
template <>
struct WidgetOf<Forms::LabeledContent> {
    using Type = LabeledContentWidget;
};
template <>
struct WidgetOf<Forms::HostedView> {
    using Type = HostedViewWidget;
};

void discard(QWidget& widget) {
    widget.hide(); // now: the layout is measured before the widget is deleted
    widget.deleteLater();
}

/// Beside each other centred; below each other at the leading edge, those that like to grow as wide
/// as there is room.
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
    widget->show(); // now, since a layout takes no notice of what is hidden
}

void discardFrom(QBoxLayout& layout, int place) {
    while (QWidget* widget = existingAt(layout, place)) {
        layout.removeWidget(widget);
        discard(*widget);
    }
}

void renderAt(QBoxLayout& layout, int place, const Forms::View& view, const QString& rowLabel) {
    std::visit(
        [&]<typename Content>(const Content& content) {
            widgetAt<typename WidgetOf<Content>::Type>(layout, place)->render(content, rowLabel);
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

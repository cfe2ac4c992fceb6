// The preferences of 16 displays with 60 modes each, rebuilt when another display is chosen,
// against Qt building the same combo boxes by itself.
#include "Linux/Desktop/Forms/FormWidget.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QVBoxLayout>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t displays = 16;
constexpr int modesPerDisplay = 60;

/// Two displays to choose in turn. None of their modes have the same text.
constexpr std::array<std::size_t, 2> chosenDisplays{0, 1};

Forms::Text verbatim(std::string text) {
    return {.text = std::move(text), .wording = Forms::Wording::verbatim};
}

Forms::Text caption(Forms::Text text) {
    text.font = Forms::Font::caption;
    text.style = Forms::ForegroundStyle::tertiary;
    return text;
}

std::string modeLabel(std::size_t display, int place) {
    const int width = 3840 - 16 * place;
    return std::to_string(width) + " × " + std::to_string(width * 9 / 16) + "  " +
           std::to_string(60 + display) + " Hz";
}

Forms::Picker displayPicker(std::size_t chosen) {
    Forms::Picker picker{.label = {"Display"}, .entries = {}, .selected = chosen, .select = {}};
    for (std::size_t display = 0; display < displays; ++display)
        picker.entries.push_back({verbatim("Display " + std::to_string(display + 1))});
    return picker;
}

Forms::Picker modePicker(std::size_t display) {
    Forms::Picker picker{.label = verbatim(""),
                         .isLabelHidden = true,
                         .minimumWidth = 170,
                         .entries = {{{"Not set"}}, {.text = verbatim(""), .isDivider = true}},
                         .selected = 2 + display,
                         .select = {}};
    for (int place = 0; place < modesPerDisplay; ++place)
        picker.entries.push_back({verbatim(modeLabel(display, place))});
    return picker;
}

/// Stands for a shortcut, which a rebuild leaves alone.
class Field : public NSView {
public:
    Field() : NSView({}) {}
    CGSize intrinsicContentSize() const override { return {120, 24}; }
    void draw(CGRect /*dirtyRect*/) override {}
};

Forms::View slotRow(const char* title, std::size_t display) {
    Forms::HostedView field{.make = [] { return std::make_shared<Field>(); },
                            .update = [](const std::shared_ptr<NSView>&) {}};
    return {Forms::LabeledContent{
        .label = {{Forms::Label{"1.square", std::nullopt, {{verbatim(title)}}}}},
        .content = {{Forms::Stack{.spacing = 8, .views = {{modePicker(display)}, {field}}}}}}};
}

Forms::Section resolutions(std::size_t display) {
    const auto hint = verbatim("Click a shortcut to change it. ⎋ cancels, ⌫ clears. Shortcuts act "
                               "on whichever display the pointer is on.");
    return {.header = Forms::Text{"Resolutions"},
            .rows = {{displayPicker(display)},
                     slotRow("Resolution 1", display),
                     slotRow("Resolution 2", display)},
            .footer = {{Forms::Stack{
                .axis = Forms::Axis::vertical,
                .spacing = 4,
                .views = {{Forms::FormattedText{caption({"Currently {}."}), modeLabel(display, 0)}},
                          {caption(hint)}}}}}};
}

Forms::Button smallButton(const char* title) {
    return {.title = {title}, .size = Forms::ControlSize::small, .action = {}};
}

Forms::Section general() {
    const Forms::Toggle automatic{.label = {"Check automatically"}, .setOn = {}};
    return {.header = Forms::Text{"General"},
            .rows = {{Forms::Toggle{.label = {"Start Tessary at login"}, .setOn = {}}},
                     {Forms::LabeledContent{
                         .label = {{Forms::Text{"Updates"}}},
                         .content = {{Forms::Stack{
                             .spacing = 8, .views = {{automatic}, {smallButton("Check Now")}}}}}}},
                     {Forms::Stack{.spacing = std::nullopt,
                                   .views = {{Forms::Text{"Keyboard shortcuts"}},
                                             {Forms::Spacer{}},
                                             {smallButton("Restore Defaults")}}}}},
            .footer = {}};
}

Forms::Form preferences(std::size_t display) {
    return {.width = 480, .sections = {resolutions(display), general()}};
}

/// The texts of a picker, as Qt takes them; dividers are null.
std::vector<QString> texts(const Forms::Picker& picker) {
    std::vector<QString> texts;
    for (const auto& entry : picker.entries)
        texts.push_back(entry.isDivider ? QString() : QString::fromStdString(entry.text.text));
    return texts;
}

/// A box for these texts; empty ones are separators.
QComboBox* boxOf(const std::vector<QString>& texts, std::size_t selected,
                 QComboBox::SizeAdjustPolicy policy) {
    auto* box = new QComboBox;
    box->setSizeAdjustPolicy(policy);
    for (const QString& text : texts)
        if (text.isNull())
            box->insertSeparator(box->count());
        else
            box->addItem(text);
    box->setCurrentIndex(static_cast<int>(selected));
    return box;
}

/// What stands in all boxes of a window.
QStringList shownTexts(const QWidget& window) {
    QStringList texts;
    for (const auto* box : window.findChildren<QComboBox*>()) {
        texts.append(box->currentText());
        for (int place = 0; place < box->count(); ++place)
            texts.append(box->itemText(place));
    }
    return texts;
}

void settle() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

/// A rebuild, with the layout that it brings.
void rebuild(benchmark::State& state, const std::array<std::size_t, 2>& chosen) {
    const std::array forms{preferences(chosen[0]), preferences(chosen[1])};
    tessary::FormWidget widget;
    widget.render(forms[1]);
    widget.show();
    QCoreApplication::processEvents();
    std::size_t turn = 0;
    for (auto _ : state) {
        widget.render(forms.at(turn++ % 2));
        settle();
    }
    widget.render(forms[0]);
    if (!shownTexts(widget).contains(QString::fromStdString(modeLabel(chosen[0], 0))))
        state.SkipWithError("the form does not show the chosen display's modes");
}

void anotherDisplay(benchmark::State& state) {
    rebuild(state, chosenDisplays);
}

void nothingChanged(benchmark::State& state) {
    rebuild(state, {0, 0});
}

/// The same boxes built by Qt alone, with no form around them.
void comboBoxes(benchmark::State& state) {
    const auto displayTexts = texts(displayPicker(0));
    const std::array modes{texts(modePicker(chosenDisplays[0])),
                           texts(modePicker(chosenDisplays[1]))};
    QWidget window;
    QVBoxLayout layout(&window);
    const auto build = [&](std::size_t turn) {
        while (QLayoutItem* item = layout.takeAt(0)) {
            delete item->widget();
            delete item;
        }
        const std::size_t display = chosenDisplays.at(turn);
        layout.addWidget(boxOf(displayTexts, display, QComboBox::AdjustToContents));
        for (int slot = 0; slot < 2; ++slot)
            layout.addWidget(boxOf(modes.at(turn), 2 + display,
                                   QComboBox::AdjustToMinimumContentsLengthWithIcon));
    };
    build(1);
    window.show();
    QCoreApplication::processEvents();
    std::size_t turn = 0;
    for (auto _ : state) {
        build(turn++ % 2);
        settle();
    }
    tessary::FormWidget widget;
    widget.render(preferences(chosenDisplays.at(0)));
    build(0);
    if (shownTexts(window) != shownTexts(widget))
        state.SkipWithError("the combo boxes show other texts");
}

BENCHMARK(anotherDisplay);
BENCHMARK(nothingChanged);
BENCHMARK(comboBoxes);

} // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

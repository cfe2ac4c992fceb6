#include "Linux/Desktop/Forms/Controls.h"

#include "Linux/Desktop/Events/MouseEvents.h"
#include "Linux/Desktop/Forms/FormText.h"
#include "Linux/Desktop/Forms/Mnemonics.h"
#include "Linux/Desktop/Views/Colours.h"
#include "Linux/Desktop/Views/Scaling.h"

#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>

namespace tessary {

namespace {

/// Calls a copy: during the call a newer form may replace the function.
template <typename Function, typename... Arguments>
void callCopy(const Function& function, Arguments... arguments) {
    if (const Function copy = function)
        copy(arguments...);
}

bool isDivider(const QComboBox& box, int index) {
    return box.itemData(index, Qt::AccessibleDescriptionRole) == QStringLiteral("separator");
}

} // namespace

PickerBox::PickerBox(QWidget* parent) : QComboBox(parent) {
    setSizeAdjustPolicy(AdjustToContents);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PickerBox::setMinimum(int width) {
    minimum_ = width;
    updateGeometry();
}

void PickerBox::setEntries(const std::vector<Forms::PickerEntry>& entries) {
    int index = 0;
    for (const Forms::PickerEntry& entry : entries)
        setEntry(index++, entry);
    while (count() > index)
        removeItem(count() - 1);
}

void PickerBox::setEntry(int index, const Forms::PickerEntry& entry) {
    const bool isThere = index < count() && isDivider(*this, index) == entry.isDivider;
    if (!isThere && index < count())
        removeItem(index);
    if (entry.isDivider) {
        if (!isThere)
            insertSeparator(index);
        return;
    }
    const QString words = wordsOf(entry.text);
    if (!isThere)
        insertItem(index, words);
    else if (itemText(index) != words)
        setItemText(index, words);
}

/// That of the fields beside it, with a style and a font that would make it one pixel higher too.
int PickerBox::usualHeight() const {
    constexpr int points = 24;
    constexpr int frame = 4;
    return std::max(fontMetrics().height() + frame, scaled(points, *this));
}

QSize PickerBox::sizeHint() const {
    return {minimum_ > 0 ? minimum_ : QComboBox::sizeHint().width(), usualHeight()};
}

/// The button may be narrower than its longest entry, which the list shows whole.
QSize PickerBox::minimumSizeHint() const {
    constexpr int narrowest = 80;
    return {std::max(narrowest, minimum_), usualHeight()};
}

void PickerBox::showPopup() {
    showActivation(*this);
    QComboBox::showPopup();
}

/// Scrolling the form must not change the choice.
void PickerBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

PickerWidget::PickerWidget(QWidget* parent) : LabeledRow(parent) {
    columns().addWidget(&label_);
    columns().addWidget(&box_);
    label_.setBuddy(&box_);
    connect(&box_, &QComboBox::activated, this,
            [this](int index) { callCopy(select_, static_cast<std::size_t>(index)); });
}

void PickerWidget::render(const Forms::Picker& picker, const QString& rowLabel) {
    select_ = picker.select;
    renderLabel(picker, rowLabel);
    columns().setSpacing(scaled(betweenLabelAndContent, *this));
    box_.setMinimum(scaled(picker.minimumWidth, *this));
    box_.setEntries(picker.entries);
    box_.setCurrentIndex(picker.selected ? static_cast<int>(*picker.selected) : -1);
    box_.setEnabled(picker.isEnabled);
    makeOutlinesVisible(box_);
    updateGeometry();
}

/// On Linux the accessible name of a box is always the chosen entry. A label that is its buddy,
/// also a hidden one, tells screen readers what the box is for.
void PickerWidget::renderLabel(const Forms::Picker& picker, const QString& rowLabel) {
    label_.render(picker.label);
    if (label_.text().isEmpty())
        label_.setText(withoutMnemonic(rowLabel));
    label_.setHidden(picker.isLabelHidden);
}

/// Assistive technologies toggle without a press.
ToggleWidget::ToggleWidget(QWidget* parent) : QCheckBox(parent) {
    connect(this, &QCheckBox::pressed, this, [this] { isPressed_ = true; });
    connect(this, &QCheckBox::released, this, [this] { isPressed_ = false; });
    connect(this, &QCheckBox::toggled, this, [this](bool isOn) {
        if (!isPressed_)
            showActivation(*this);
        callCopy(setOn_, isOn);
    });
}

void ToggleWidget::render(const Forms::Toggle& toggle, const QString& rowLabel) {
    setOn_ = toggle.setOn;
    setText(withMnemonic(*this, wordsOf(toggle.label)));
    setAccessibleDescription(rowLabel);
    const QSignalBlocker silence(this);
    setChecked(toggle.isOn);
    makeOutlinesVisible(*this);
}

ButtonWidget::ButtonWidget(QWidget* parent) : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(this, &QPushButton::pressed, this, [this] { showActivation(*this); });
    connect(this, &QPushButton::clicked, this, [this] { callCopy(action_); });
}

void ButtonWidget::render(const Forms::Button& button, const QString& rowLabel) {
    action_ = button.action;
    const QFont& inherited = parentWidget()->font();
    setFont(button.size == Forms::ControlSize::small ? smaller(inherited) : inherited);
    setText(withMnemonic(*this, wordsOf(button.title)));
    setAccessibleDescription(rowLabel);
    makeOutlinesVisible(*this);
}

/// Some styles leave no space around a long title. The space is wished for, not required.
QSize ButtonWidget::sizeHint() const {
    const int title = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return QPushButton::sizeHint().expandedTo({title + 2 * fontMetrics().height(), 0});
}

QSize ButtonWidget::minimumSizeHint() const {
    return QPushButton::sizeHint();
}

} // namespace tessary

#include "Linux/Desktop/Forms/Controls.h"

#include "Linux/Desktop/Forms/FormText.h"

#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>

namespace tessary {

namespace {

/// A copy is called: the call may bring a newer form, with another function in the old one's place.
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
}

/// With a width of its own the box stands beside something else, and takes what room there is.
void PickerBox::setMinimum(int width) {
    minimum_ = width;
    setSizeAdjustPolicy(width > 0 ? AdjustToMinimumContentsLengthWithIcon : AdjustToContents);
    setSizePolicy(width > 0 ? QSizePolicy::Expanding : QSizePolicy::Preferred, QSizePolicy::Fixed);
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

QSize PickerBox::sizeHint() const {
    const QSize hint = QComboBox::sizeHint();
    return {minimum_ > 0 ? minimum_ : hint.width(), hint.height()};
}

/// The button may be narrower than its longest entry, which the list shows whole.
QSize PickerBox::minimumSizeHint() const {
    constexpr int narrowest = 80;
    return {std::max(narrowest, minimum_), QComboBox::minimumSizeHint().height()};
}

/// Turning the wheel above a form is no choice.
void PickerBox::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

PickerWidget::PickerWidget(QWidget* parent) : QWidget(parent) {
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.addWidget(&label_, 1);
    layout_.addWidget(&box_);
    label_.setBuddy(&box_);
    connect(&box_, &QComboBox::activated, this,
            [this](int index) { choose(static_cast<std::size_t>(index)); });
}

void PickerWidget::render(const Forms::Picker& picker, const QString& rowLabel) {
    select_ = picker.select;
    selected_ = picker.selected;
    renderLabel(picker, rowLabel);
    box_.setMinimum(qRound(picker.minimumWidth * pointSize(*this)));
    box_.setEntries(picker.entries);
    box_.setCurrentIndex(picker.selected ? static_cast<int>(*picker.selected) : -1);
    box_.setEnabled(picker.isEnabled);
    updateGeometry();
}

/// On Linux a box's accessible name is the chosen entry, whatever name it was given; what it is
/// about is told by a label that belongs to it, also one that is hidden. Such labels know
/// mnemonics.
void PickerWidget::renderLabel(const Forms::Picker& picker, const QString& rowLabel) {
    const QString words = wordsOf(picker.label);
    label_.render(picker.label);
    label_.setText(withoutMnemonic(words.isEmpty() ? rowLabel : words));
    label_.setHidden(picker.isLabelHidden);
}

void PickerWidget::choose(std::size_t entry) {
    if (entry != selected_)
        callCopy(select_, entry);
}

/// Assistive technologies toggle without a click.
ToggleWidget::ToggleWidget(QWidget* parent) : QCheckBox(parent) {
    connect(this, &QCheckBox::toggled, this, [this](bool isOn) { callCopy(setOn_, isOn); });
}

void ToggleWidget::render(const Forms::Toggle& toggle, const QString& rowLabel) {
    setOn_ = toggle.setOn;
    setText(withoutMnemonic(wordsOf(toggle.label)));
    setAccessibleDescription(rowLabel);
    const QSignalBlocker silence(this);
    setChecked(toggle.isOn);
}

ButtonWidget::ButtonWidget(QWidget* parent) : QPushButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QPushButton::clicked, this, [this] { callCopy(action_); });
}

void ButtonWidget::render(const Forms::Button& button, const QString& rowLabel) {
    action_ = button.action;
    const QFont& inherited = parentWidget()->font();
    setFont(button.size == Forms::ControlSize::small ? smaller(inherited) : inherited);
    setText(withoutMnemonic(wordsOf(button.title)));
    setAccessibleDescription(rowLabel);
}

/// Some styles leave no room around a long title.
QSize ButtonWidget::sizeHint() const {
    const int title = fontMetrics().size(Qt::TextShowMnemonic, text()).width();
    return QPushButton::sizeHint().expandedTo({title + 2 * fontMetrics().height(), 0});
}

} // namespace tessary

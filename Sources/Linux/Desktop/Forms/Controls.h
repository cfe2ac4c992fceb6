// The controls of a form. Their callbacks are called when the user changes something, never when a
// newer form does.
#pragma once

#include "Linux/Desktop/Forms/LabeledRow.h"
#include "Linux/Desktop/Forms/TextLabel.h"
#include "Platform/AppKit/Forms.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

#include <cstddef>
#include <functional>
#include <vector>

namespace tessary {

/// The button of a picker, which opens its list.
class PickerBox : public QComboBox {
public:
    explicit PickerBox(QWidget* parent = nullptr);

    void setMinimum(int width);

    /// Changes only what differs, as the list may be open.
    void setEntries(const std::vector<Forms::PickerEntry>& entries);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    void setEntry(int index, const Forms::PickerEntry& entry);
    int usualHeight() const;

    int minimum_ = 0;
};

class PickerWidget : public LabeledRow {
public:
    explicit PickerWidget(QWidget* parent = nullptr);

    void render(const Forms::Picker& picker, const QString& rowLabel);

private:
    void renderLabel(const Forms::Picker& picker, const QString& rowLabel);

    TextLabel label_{this};
    PickerBox box_{this};
    std::function<void(std::size_t)> select_;
};

class ToggleWidget : public QCheckBox {
public:
    explicit ToggleWidget(QWidget* parent = nullptr);

    void render(const Forms::Toggle& toggle, const QString& rowLabel);

private:
    bool isPressed_ = false; ///< by a mouse or a key
    std::function<void(bool)> setOn_;
};

class ButtonWidget : public QPushButton {
public:
    explicit ButtonWidget(QWidget* parent = nullptr);

    void render(const Forms::Button& button, const QString& rowLabel);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    std::function<void()> action_;
};

} // namespace tessary

#pragma once

#include "Linux/Desktop/Forms/Mnemonics.h"
#include "Platform/AppKit/Forms.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tessary {

/// Shows a form, and later versions of it: a part that is still of the same kind at the same place
/// stays the same widget. As wide as the form says, wider for large fonts, and exactly as tall as
/// it needs.
class FormWidget : public QWidget {
public:
    explicit FormWidget(QWidget* parent = nullptr);

    void render(Forms::Form form);

    const Mnemonics& mnemonics() const { return mnemonics_; }

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void fit();

    Forms::Form form_;
    Mnemonics mnemonics_;
    QVBoxLayout layout_{this};
};

} // namespace tessary

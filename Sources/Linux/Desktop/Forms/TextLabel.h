#pragma once

#include "Platform/AppKit/Forms.h"

#include <QLabel>

namespace tessary {

/// A piece of text that is broken into lines where it is too long. With a buddy it has a mnemonic.
class TextLabel : public QLabel {
public:
    explicit TextLabel(QWidget* parent = nullptr);

    void setBold(bool isBold) { isBold_ = isBold; }

    void render(const Forms::Text& text, const QString& rowLabel = QString());
    void render(const Forms::FormattedText& text, const QString& rowLabel = QString());

    QSize sizeHint() const override;

private:
    void setStyle(Forms::Font font, Forms::ForegroundStyle style);

    bool isBold_ = false;
};

} // namespace tessary

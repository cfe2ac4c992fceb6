// Widgets that arrange others, and one for a view of the program's own.
#pragma once

#include "Linux/Desktop/Forms/LabeledRow.h"
#include "Platform/AppKit/Forms.h"

#include <QBoxLayout>
#include <QColor>
#include <QIcon>
#include <QWidget>

#include <memory>
#include <string>

namespace tessary {

class StackWidget : public QWidget {
public:
    explicit StackWidget(QWidget* parent = nullptr);

    void render(const Forms::Stack& stack, const QString& rowLabel);

private:
    QBoxLayout layout_{QBoxLayout::LeftToRight, this};
};

/// A symbol, as tall and wide as a line of text is high.
class SymbolWidget : public QWidget {
public:
    explicit SymbolWidget(QWidget* parent = nullptr);

    void setSymbol(const std::string& symbol, const QColor& colour);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string symbol_;
    QColor colour_;
    QIcon icon_;
};

class LabelWidget : public QWidget {
public:
    explicit LabelWidget(QWidget* parent = nullptr);

    void render(const Forms::Label& label, const QString& rowLabel);

private:
    SymbolWidget symbol_{this};
    QBoxLayout layout_{QBoxLayout::LeftToRight, this};
};

class LabeledContentWidget : public LabeledRow {
public:
    explicit LabeledContentWidget(QWidget* parent = nullptr);

    void render(const Forms::LabeledContent& row, const QString& rowLabel);

private:
    void setBuddy(const Forms::LabeledContent& row);
};

class SpacerWidget : public QWidget {
public:
    explicit SpacerWidget(QWidget* parent = nullptr);

    void render(const Forms::Spacer& /*spacer*/, const QString& /*rowLabel*/) {}
};

class HostedViewWidget : public QWidget {
public:
    explicit HostedViewWidget(QWidget* parent = nullptr);

    void render(const Forms::HostedView& hosted, const QString& rowLabel);

private:
    std::shared_ptr<NSView> view_;
    QWidget* widget_ = nullptr;
    QBoxLayout layout_{QBoxLayout::LeftToRight, this};
};

} // namespace tessary

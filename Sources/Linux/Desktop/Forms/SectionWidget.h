#pragma once

#include "Linux/Desktop/Forms/TextLabel.h"
#include "Platform/AppKit/Forms.h"

#include <QVBoxLayout>
#include <QWidget>

namespace tessary {

/// The rows of a section on a panel of their own, with lines between them.
class RowsPanel : public QWidget {
public:
    explicit RowsPanel(QWidget* parent = nullptr);

    /// `width` is the one that the panel will have.
    void render(const std::vector<Forms::View>& rows, int width);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout layout_{this};
};

class SectionWidget : public QWidget {
public:
    explicit SectionWidget(QWidget* parent = nullptr);

    /// `width` is the one that the section will have.
    void render(const Forms::Section& section, int width);

private:
    void renderFooter(const std::vector<Forms::View>& footer);

    TextLabel header_{this};
    RowsPanel panel_{this};
    QVBoxLayout layout_{this};
};

} // namespace tessary

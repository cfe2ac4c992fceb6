#pragma once

#include <QHBoxLayout>
#include <QWidget>

#include <vector>

namespace tessary {

/// In points.
constexpr int betweenLabelAndContent = 12;

/// A label at the leading edge, and behind it the content that it names. A derived class puts both
/// into `columns()`.
class LabeledRow : public QWidget {
public:
    explicit LabeledRow(QWidget* parent);

    /// Whether the content takes all the width that the label leaves.
    bool isFilled() const;

    /// The width of the label's text in one line.
    int labelWidth() const;

    /// The largest width of the label that leaves the content its minimum, in a row of this width.
    int roomForLabel(int width) const;

    void setLabelWidth(int width);

protected:
    QHBoxLayout& columns() { return columns_; }

private:
    QHBoxLayout columns_{this};
};

/// Lays out rows below each other that are `width` wide: those that are filled have one column of
/// labels, and every label has one line where its content leaves enough width.
void alignLabels(const std::vector<LabeledRow*>& rows, int width);

} // namespace tessary

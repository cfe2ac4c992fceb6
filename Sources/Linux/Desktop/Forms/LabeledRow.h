#pragma once

#include <QHBoxLayout>
#include <QWidget>

#include <vector>

namespace tessary {

/// In points.
constexpr int betweenLabelAndContent = 12;

/// A label at the leading edge, and behind it what it is about. Whoever derives from it puts both
/// into `columns()`.
class LabeledRow : public QWidget {
public:
    explicit LabeledRow(QWidget* parent);

    /// Whether the content takes all room that the label leaves.
    bool isFilled() const;

    /// The label's in one line.
    int labelWidth() const;

    /// The most that leaves the content its least, in a row that is `width` wide.
    int roomForLabel(int width) const;

    void setLabelWidth(int width);

protected:
    QHBoxLayout& columns() { return columns_; }

private:
    QHBoxLayout columns_{this};
};

/// Lays out rows below each other that are `width` wide: those that are filled have one column of
/// labels, and every label has one line where its content leaves the room.
void alignLabels(const std::vector<LabeledRow*>& rows, int width);

} // namespace tessary

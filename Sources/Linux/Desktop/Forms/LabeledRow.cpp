#include "Linux/Desktop/Forms/LabeledRow.h"

#include "Linux/Desktop/Forms/Rendering.h"

#include <algorithm>
#include <limits>

namespace tessary {

LabeledRow::LabeledRow(QWidget* parent) : QWidget(parent) {
    columns_.setContentsMargins(0, 0, 0, 0);
}

bool LabeledRow::isFilled() const {
    return columns_.itemAt(1)->expandingDirections().testFlag(Qt::Horizontal);
}

int LabeledRow::labelWidth() const {
    return existingAt(columns_, 0)->sizeHint().width();
}

int LabeledRow::roomForLabel(int width) const {
    return std::max(0, width - columns_.spacing() - columns_.itemAt(1)->minimumSize().width());
}

/// Beside content that ends at the trailing edge the label may be wider than it needs.
void LabeledRow::setLabelWidth(int width) {
    QWidget* label = existingAt(columns_, 0);
    label->setMinimumWidth(width);
    label->setMaximumWidth(isFilled() ? width : QWIDGETSIZE_MAX);
}

void alignLabels(const std::vector<LabeledRow*>& rows, int width) {
    int widest = 0;
    int room = std::numeric_limits<int>::max();
    for (const LabeledRow* row : rows)
        if (row->isFilled()) {
            widest = std::max(widest, row->labelWidth());
            room = std::min(room, row->roomForLabel(width));
        }
    for (LabeledRow* row : rows)
        row->setLabelWidth(row->isFilled() ? std::min(widest, room)
                                           : std::min(row->labelWidth(), row->roomForLabel(width)));
}

} // namespace tessary

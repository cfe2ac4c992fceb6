#include "TSY/SlotRow.h"

#include "TSY/Settings.h"
#include "TSY/ShortcutField.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tsy {

std::optional<ModeSpec> SlotRow::selection() const {
    const auto display = model->selectedDisplay();
    auto preset = display ? Settings::shared().spec(slot, display->key) : std::nullopt;
    const bool isOffered = preset && std::ranges::find(model->modes(), *preset,
                                                       &DisplayMode::spec) != model->modes().end();
    return isOffered ? preset : std::nullopt;
}

void SlotRow::setSelection(const std::optional<ModeSpec>& preset) const {
    const auto display = model->selectedDisplay();
    if (!display)
        return;
    Settings::shared().setSpec(preset, slot, display->key);
    model->incrementRevision();
}

Forms::View SlotRow::modePicker() const {
    const auto verbatim = Forms::Wording::verbatim;
    Forms::Picker picker;
    picker.label = {.text = "", .wording = verbatim};
    picker.isLabelHidden = true;
    picker.minimumWidth = 170;
    picker.entries = {{{"Not set"}}, {.text = {"", verbatim}, .isDivider = true}};
    picker.selected = 0;
    std::vector<std::optional<ModeSpec>> tags(picker.entries.size());
    const auto selected = selection();
    for (const DisplayMode& mode : model->modes()) {
        if (selected == mode.spec)
            picker.selected = tags.size();
        tags.emplace_back(mode.spec);
        picker.entries.push_back({.text = {mode.label, verbatim}});
    }
    picker.select = [row = *this, tags = std::move(tags)](std::size_t entry) {
        row.setSelection(tags.at(entry));
    };
    return {std::move(picker)};
}

Forms::View SlotRow::body() const {
    const Forms::Text title{.text = std::string(slot.title()), .wording = Forms::Wording::verbatim};
    return {Forms::LabeledContent{
        .label = {{Forms::Label{
            .systemImage = std::string(slot.symbolName()),
            .imageColor = std::nullopt,
            .title = {{title}},
        }}},
        .content = {{Forms::Stack{
            .axis = Forms::Axis::horizontal,
            .spacing = 8,
            .views = {modePicker(), ShortcutField{slot, model}.body()},
        }}},
    }};
}

} // namespace tsy

#include "TSY/SettingsView.h"

#include "TSY/Settings.h"
#include "TSY/SlotRow.h"
#include "TSY/UpdateController.h"

#include <algorithm>
#include <utility>

namespace tsy {

namespace {

using Forms::Axis;
using Forms::Font;
using Forms::ForegroundStyle;
using Forms::Text;
using Forms::View;
using Forms::Wording;

using Model = std::shared_ptr<SettingsModel>;

Text verbatim(std::string text) {
    return {.text = std::move(text), .wording = Wording::verbatim};
}

/// The text in the small font of captions.
Text caption(Text text, ForegroundStyle style) {
    text.font = Font::caption;
    text.style = style;
    return text;
}

Forms::Button smallButton(const char* title, std::function<void()> action) {
    return {.title = {title}, .size = Forms::ControlSize::small, .action = std::move(action)};
}

// Resolutions

std::string displayText(const Display& display, const SettingsModel& model) {
    return display.name + (display.isMain && model.displays().size() > 1 ? " (main)" : "");
}

View displayPicker(const Model& model) {
    Forms::Picker picker;
    picker.label = {"Display"};
    std::vector<CGDirectDisplayID> tags;
    for (const Display& display : model->displays()) {
        if (display.id == model->selectedDisplayID())
            picker.selected = tags.size();
        tags.push_back(display.id);
        picker.entries.push_back({verbatim(displayText(display, *model))});
    }
    picker.isEnabled = tags.size() > 1;
    picker.select = [model, tags = std::move(tags)](std::size_t entry) {
        model->setSelectedDisplayID(tags.at(entry));
    };
    return {std::move(picker)};
}

View resolutionsFooter(const SettingsModel& model) {
    Forms::Stack lines{.axis = Axis::vertical, .spacing = 4, .topPadding = 2, .views = {}};
    if (auto label = model.currentLabel())
        lines.views.push_back({Forms::FormattedText{
            caption({"Currently {}."}, ForegroundStyle::tertiary), std::move(*label)}});
    lines.views.push_back(
        {caption(verbatim("Click a shortcut to change it. ⎋ cancels, ⌫ clears. Shortcuts act on "
                          "whichever display the pointer is on."),
                 ForegroundStyle::tertiary)});
    return {std::move(lines)};
}

Forms::Section resolutions(const Model& model) {
    Forms::Section section{
        .header = Text{"Resolutions"}, .rows = {}, .footer = {resolutionsFooter(*model)}};
    section.rows.push_back(displayPicker(model));
    for (const Slot slot : Slot::allCases)
        section.rows.push_back(SlotRow{slot, model}.body());
    return section;
}

// General

View loginToggle(const Model& model) {
    return {Forms::Toggle{
        .label = {"Start Tessary at login"},
        .isOn = model->launchAtLogin(),
        .setOn = [model](bool isOn) { model->setLaunchAtLogin(isOn); },
    }};
}

View updatesRow(const Model& model) {
    Forms::Toggle automatic{
        .label = {"Check automatically"},
        .isOn = model->checksForUpdates(),
        .setOn = [model](bool isOn) { model->setChecksForUpdates(isOn); },
    };
    auto now = smallButton(
        "Check Now", [] { UpdateController::shared().controller().updater().checkForUpdates(); });
    return {Forms::LabeledContent{
        .label = {{Text{"Updates"}}},
        .content = {{Forms::Stack{.axis = Axis::horizontal,
                                  .spacing = 8,
                                  .views = {{std::move(automatic)}, {std::move(now)}}}}},
    }};
}

View shortcutsRow(const Model& model) {
    auto restore = smallButton("Restore Defaults", [model] {
        Settings::shared().resetShortcuts();
        model->incrementRevision();
    });
    return {Forms::Stack{
        .axis = Axis::horizontal,
        .spacing = std::nullopt,
        .views = {{Text{"Keyboard shortcuts"}}, {Forms::Spacer{}}, {std::move(restore)}},
    }};
}

Forms::Section general(const Model& model) {
    return {.header = Text{"General"},
            .rows = {loginToggle(model), updatesRow(model), shortcutsRow(model)},
            .footer = {}};
}

// Function keys

Forms::Section functionKeyNote() {
    Forms::Stack lines{
        .axis = Axis::vertical,
        .spacing = 2,
        .views = {{Text{"Function keys need one System Settings tweak"}},
                  {caption(verbatim("Turn on Keyboard › “Use F1, F2, etc. keys as standard "
                                    "function keys”, or hold fn when you press them."),
                           ForegroundStyle::secondary)}},
    };
    return {.header = std::nullopt,
            .rows = {{Forms::Label{.systemImage = "info.circle.fill",
                                   .imageColor = NSColor::systemBlueColor(),
                                   .title = {{std::move(lines)}}}}},
            .footer = {}};
}

} // namespace

bool SettingsView::usesFunctionKeyShortcut() {
    return std::ranges::any_of(Slot::allCases, [](Slot slot) {
        const auto shortcut = Settings::shared().shortcut(slot);
        return shortcut && Shortcut::isFunctionKey(shortcut->keyCode) && shortcut->modifiers == 0;
    });
}

Forms::Form SettingsView::body() const {
    Forms::Form form{.width = 480, .sections = {resolutions(model), general(model)}};
    if (usesFunctionKeyShortcut())
        form.sections.push_back(functionKeyNote());
    return form;
}

} // namespace tsy

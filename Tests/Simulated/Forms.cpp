#include "Simulated/Windows.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace {

using namespace Forms;

using Views = std::vector<std::pair<std::string, const View*>>;

void collect(const std::vector<View>& parts, const std::string& row, Views& views) {
    for (const View& view : parts) {
        views.emplace_back(row, &view);
        if (const auto* stack = std::get_if<Stack>(&view.content))
            collect(stack->views, row, views);
        if (const auto* label = std::get_if<Label>(&view.content))
            collect(label->title, row, views);
        if (const auto* labeled = std::get_if<LabeledContent>(&view.content)) {
            collect(labeled->label, row, views); // whose text comes last
            collect(labeled->content, std::get<Text>(views.back().second->content).text, views);
        }
    }
}

void collect(const Section& section, Views& views) {
    collect(section.rows, "", views);
    collect(section.footer, "", views);
}

/// What the user sees of a view, and which texts in it are looked up.
struct Description {
    std::set<std::string>& localized;
    std::string row; ///< that they are in

    std::string operator()(const Text& text) const {
        if (text.wording == Wording::localized)
            localized.insert(text.text);
        return text.text;
    }

    std::string operator()(const FormattedText& text) const {
        std::string whole = (*this)(text.text);
        return whole.replace(whole.find("{}"), 2, text.value);
    }

    std::string operator()(const Picker& picker) const {
        std::string text = (*this)(picker.label) + " [";
        for (std::size_t i = 0; i < picker.entries.size(); ++i)
            text += std::string(i > 0 ? " | " : "") + (picker.selected == i ? "✓ " : "") +
                    (picker.entries[i].isDivider ? "---" : (*this)(picker.entries[i].text));
        return text + (picker.isEnabled ? "]" : "] (disabled)");
    }

    std::string operator()(const Toggle& toggle) const {
        return (*this)(toggle.label) + (toggle.isOn ? ": on" : ": off");
    }

    std::string operator()(const Button& button) const { return (*this)(button.title); }

    std::string operator()(const HostedView& /*view*/) const {
        localized.insert(simulated::field(row).toolTip());
        return simulated::drawn(simulated::field(row)).text;
    }

    std::string operator()(const auto& /*container*/) const { return {}; }
};

const Form& currentForm() {
    return simulated::state.window.lock()->contentViewController()->form();
}

/// The control of this kind that is named so, or stands in the row that is.
template <typename Control>
const Control& control(const std::string& name, Text Control::*label) {
    for (const auto& [row, view] : simulated::viewsOf(currentForm()))
        if (const auto* found = std::get_if<Control>(&view->content))
            if ((found->*label).text == name || ((found->*label).text.empty() && row == name))
                return *found;
    throw std::invalid_argument("no control " + name);
}

} // namespace

std::vector<std::pair<std::string, const View*>> simulated::viewsOf(const Form& form) {
    Views views;
    for (const Section& section : form.sections)
        collect(section, views);
    return views;
}

std::string simulated::shownForm(std::set<std::string>* localized) {
    std::set<std::string> texts;
    std::string shown;
    for (const Section& section : currentForm().sections) {
        shown +=
            Description{texts, {}}(section.header.value_or(Text{"---", Wording::verbatim})) + "\n";
        Views views;
        collect(section, views);
        for (const auto& [row, view] : views)
            if (const auto text = std::visit(Description{texts, row}, view->content); !text.empty())
                shown += "  " + text + "\n";
    }
    if (localized != nullptr)
        *localized = texts;
    return shown;
}

void simulated::pick(const std::string& label, const std::string& entry) {
    const auto& picker = control(label, &Picker::label);
    const auto chosen = std::ranges::find(
        picker.entries, entry, [](const PickerEntry& candidate) { return candidate.text.text; });
    if (chosen == picker.entries.end())
        throw std::invalid_argument("no entry " + entry);
    const auto index = static_cast<std::size_t>(chosen - picker.entries.begin());
    if (picker.isEnabled)
        picker.select(index);
}

void simulated::flip(const std::string& label) {
    const auto& toggle = control(label, &Toggle::label);
    toggle.setOn(!toggle.isOn);
}

void simulated::pushButton(const std::string& title) {
    control(title, &Button::title).action();
}

#include "Simulated/Windows.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace {

using namespace Forms;

std::vector<const View*> addresses(const std::vector<View>& views) {
    std::vector<const View*> result(views.size());
    std::ranges::transform(views, result.begin(), [](const View& view) { return &view; });
    return result;
}

std::vector<const View*> children(const View& view) {
    if (const auto* stack = std::get_if<Stack>(&view.content))
        return addresses(stack->views);
    if (const auto* label = std::get_if<Label>(&view.content))
        return addresses(label->title);
    if (const auto* row = std::get_if<LabeledContent>(&view.content))
        return {&row->label.at(0), &row->content.at(0)};
    return {};
}

/// The first text in the view.
std::string firstText(const View& view) {
    if (const auto* text = std::get_if<Text>(&view.content))
        return text->text;
    const auto inner = children(view);
    return inner.empty() ? "" : firstText(*inner.front());
}

using Views = std::vector<std::pair<std::string, const View*>>;

void collect(const View& view, std::string row, Views& views) {
    if (const auto* labeled = std::get_if<LabeledContent>(&view.content))
        row = firstText(labeled->label.at(0));
    views.emplace_back(row, &view);
    for (const View* child : children(view))
        collect(*child, row, views);
}

std::string number(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

/// Views as texts.
struct Description {
    std::string row; ///< that they are in

    std::string operator()(const Text& text) const {
        constexpr const char* styles[]{"", " secondary", " tertiary"};
        return (text.wording == Wording::localized ? "@" : "") + text.text +
               (text.font == Font::caption ? " caption" : "") +
               styles[static_cast<std::size_t>(text.style)];
    }

    std::string operator()(const FormattedText& text) const {
        Text whole = text.text;
        const auto place = whole.text.find("{}");
        whole.text.insert(place + 1, text.value);
        return (*this)(whole);
    }

    std::string operator()(const Stack& stack) const {
        std::string text = stack.axis == Axis::horizontal ? "H" : "V";
        text += stack.spacing ? number(*stack.spacing) : "";
        text += stack.topPadding != 0 ? "+" + number(stack.topPadding) : "";
        const char* separator = "(";
        for (const View& view : stack.views)
            text += std::exchange(separator, ", ") + of(view);
        return text + ")";
    }

    std::string operator()(const Label& label) const {
        const bool isBlue = label.imageColor == NSColor::systemBlueColor();
        return "<" + label.systemImage + (isBlue ? " blue> " : "> ") + of(label.title.at(0));
    }

    std::string operator()(const Picker& picker) const {
        std::string text = picker.isLabelHidden ? "" : (*this)(picker.label) + " ";
        text += picker.minimumWidth > 0 ? "≥" + number(picker.minimumWidth) + " [" : "[";
        for (std::size_t i = 0; i < picker.entries.size(); ++i)
            text += std::string(i > 0 ? " | " : "") + (picker.selected == i ? "✓ " : "") +
                    (picker.entries[i].isDivider ? "---" : (*this)(picker.entries[i].text));
        return text + (picker.isEnabled ? "]" : "] (disabled)");
    }

    std::string operator()(const Toggle& toggle) const {
        return (*this)(toggle.label) + (toggle.isOn ? ": on" : ": off");
    }

    std::string operator()(const Button& button) const {
        return (button.size == ControlSize::small ? "small button " : "button ") +
               (*this)(button.title);
    }

    std::string operator()(const Spacer& /*spacer*/) const { return "room"; }

    std::string operator()(const LabeledContent& content) const {
        const Description inner{firstText(content.label.at(0))};
        return inner.of(content.label.at(0)) + ": " + inner.of(content.content.at(0));
    }

    std::string operator()(const HostedView& /*view*/) const {
        return "field " + simulated::drawnText(simulated::field(row));
    }

    std::string of(const View& view) const { return std::visit(*this, view.content); }
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
        for (const auto* part : {&section.rows, &section.footer})
            for (const View& view : *part)
                collect(view, "", views);
    return views;
}

std::string simulated::shownForm() {
    const Form& form = currentForm();
    std::string text = number(form.width) + " wide\n";
    for (const Section& section : form.sections) {
        text += (section.header ? Description{}(*section.header) : "---") + "\n";
        for (const View& row : section.rows)
            text += "  " + Description{}.of(row) + "\n";
        for (const View& footer : section.footer)
            text += "  footer " + Description{}.of(footer) + "\n";
    }
    return text;
}

void simulated::pick(const std::string& label, const std::string& entry) {
    const auto& picker = control(label, &Picker::label);
    const auto chosen =
        std::ranges::find_if(picker.entries, [&entry](const PickerEntry& candidate) {
            return candidate.text.text == entry && !candidate.isDivider;
        });
    if (chosen == picker.entries.end())
        throw std::invalid_argument("no entry " + entry);
    const auto index = static_cast<std::size_t>(chosen - picker.entries.begin());
    if (picker.isEnabled && picker.selected != index)
        picker.select(index);
}

void simulated::flip(const std::string& label) {
    const auto& toggle = control(label, &Toggle::label);
    toggle.setOn(!toggle.isOn);
}

void simulated::pushButton(const std::string& title) {
    control(title, &Button::title).action();
}

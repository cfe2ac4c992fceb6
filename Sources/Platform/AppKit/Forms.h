// Forms as plain values, which the program builds and the platform shows. Main thread only.
#pragma once

#include "Platform/AppKit/NSDrawing.h"
#include "Platform/AppKit/NSView.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace Forms {

/// Whether a text is translated.
enum class Wording {
    localized, ///< looked up among the translations by its English wording
    verbatim,  ///< shown as it stands
};

enum class Font { body, caption };

enum class ForegroundStyle { primary, secondary, tertiary };

/// A piece of plain text, broken into lines where it is too long.
struct Text {
    std::string text;
    Wording wording = Wording::localized;
    Font font = Font::body;
    ForegroundStyle style = ForegroundStyle::primary;
};

/// A text with a value in it: "{}" in the localized `text` stands for `value`, which is verbatim.
struct FormattedText {
    Text text;
    std::string value;
};

struct View;

enum class Axis { horizontal, vertical };

/// Views beside or below each other. Horizontal ones are centred vertically, vertical ones begin at
/// the leading edge.
struct Stack {
    Axis axis = Axis::horizontal;
    std::optional<double> spacing; ///< in points; the toolkit's own where there is none
    double topPadding = 0;         ///< in points
    std::vector<View> views;
};

/// A symbol and, behind it, one view.
struct Label {
    std::string systemImage;           ///< an unknown one is an empty place
    std::optional<NSColor> imageColor; ///< the text's own where there is none
    std::vector<View> title;           ///< exactly one
};

/// One line of a picker's list.
struct PickerEntry {
    Text text;
    bool isDivider = false; ///< a line that cannot be chosen
};

/// A choice of one entry from a list that pops up.
struct Picker {
    Text label; ///< stands in front, or is only spoken
    bool isLabelHidden = false;
    double minimumWidth = 0; ///< of the list's button, in points
    bool isEnabled = true;
    std::vector<PickerEntry> entries;
    std::optional<std::size_t> selected; ///< the entry that is chosen now
    /// Called when the user picks an entry, also the one that is chosen now.
    std::function<void(std::size_t entry)> select;
};

struct Toggle {
    Text label;
    bool isOn = false;
    std::function<void(bool isOn)> setOn;
};

enum class ControlSize { regular, small };

struct Button {
    Text title;
    ControlSize size = ControlSize::regular;
    std::function<void()> action;
};

/// Takes the room that is left in its stack.
struct Spacer {};

/// A row: what it is about at its leading edge, and its content at the trailing one.
struct LabeledContent {
    std::vector<View> label;   ///< exactly one
    std::vector<View> content; ///< exactly one
};

/// A view of the program's own, at its intrinsic size.
struct HostedView {
    std::function<std::shared_ptr<NSView>()> make; ///< called once, as long as the row stays
    std::function<void(const std::shared_ptr<NSView>&)> update; ///< called at every rebuild
};

struct View {
    std::variant<Text, FormattedText, Stack, Label, Picker, Toggle, Button, Spacer, LabeledContent,
                 HostedView>
        content;
};

/// Rows that belong together, with a header above and a footer below them.
struct Section {
    std::optional<Text> header;
    std::vector<View> rows;
    std::vector<View> footer; ///< at most one
};

/// Grouped sections, as wide as told and as tall as they need.
struct Form {
    double width = 0; ///< in points
    std::vector<Section> sections;
};

} // namespace Forms

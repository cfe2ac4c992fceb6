// The declarative toolkit: models that tell when they change, forms as plain values, and the
// controller that keeps a form up to date. Main thread only.
#pragma once

#include "Platform/AppKit/NSDrawing.h"
#include "Platform/AppKit/NSView.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

/// A model that tells its subscribers before anything of it changes.
class ObservableObject {
public:
    using Token = std::uint64_t;

    /// Has `willChange` called before each change, until `unsubscribe`.
    Token subscribe(std::function<void()> willChange);
    void unsubscribe(Token token);

    /// Tells the subscribers, in the order of their subscription.
    void sendWillChange() const;

    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

protected:
    ObservableObject() = default;
    ~ObservableObject() = default;

private:
    std::map<Token, std::function<void()>> subscribers_;
    Token lastToken_ = 0;
};

/// A property of a model. Every assignment tells the model's subscribers first, also one of an
/// equal value.
template <typename T>
class Published {
public:
    Published(ObservableObject& owner, T value) : owner_(owner), value_(std::move(value)) {}

    const T& get() const { return value_; }

    void set(T value) {
        owner_.sendWillChange();
        value_ = std::move(value);
    }

private:
    ObservableObject& owner_;
    T value_;
};

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
    std::string systemImage;
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

/// Keeps a form up to date with its model. A change of the model only marks it; it is built again
/// once, later, from the main queue, or before somebody looks at it.
class NSHostingController : public std::enable_shared_from_this<NSHostingController> {
public:
    using RootView = std::function<Forms::Form()>;

    /// `rootView` builds the form from the model.
    static std::shared_ptr<NSHostingController> make(RootView rootView,
                                                     std::shared_ptr<ObservableObject> model);
    ~NSHostingController();

    /// The form as the model is now.
    const Forms::Form& form();

    /// Has `render` called now and whenever the form was built again. For the platform's window.
    void setRenderer(std::function<void(const Forms::Form& form)> render);

    /// Builds the form again if the model has changed.
    void rebuildIfNeeded();

    NSHostingController(const NSHostingController&) = delete;
    NSHostingController& operator=(const NSHostingController&) = delete;

private:
    NSHostingController(RootView rootView, std::shared_ptr<ObservableObject> model);

    void modelWillChange();

    RootView rootView_;
    std::shared_ptr<ObservableObject> model_;
    ObservableObject::Token subscription_ = 0;
    bool needsRebuild_ = true;
    Forms::Form form_;
    std::function<void(const Forms::Form&)> render_;
};

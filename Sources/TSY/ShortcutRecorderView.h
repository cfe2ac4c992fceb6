#pragma once

#include "Platform/AppKit/NSView.h"
#include "TSY/Shortcut.h"

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace tsy {

/// A field that shows a shortcut and, after a click, takes the next key press as a new one.
/// Meanwhile no hot key is registered, so that combinations in use reach the field too. Knows
/// nothing of slots or of the store. Main thread only.
class ShortcutRecorderView : public NSView {
public:
    /// Told of each new shortcut, or of nothing when the user cleared it, while hot keys are still
    /// withdrawn.
    using OnChange = std::function<void(const std::optional<Shortcut>& shortcut)>;

    /// Whether a shortcut may be recorded.
    using Validator = std::function<bool(const Shortcut& shortcut)>;

    static std::shared_ptr<ShortcutRecorderView> make(CGRect frame);
    ~ShortcutRecorderView() override;

    const std::optional<Shortcut>& shortcut() const { return shortcut_; }
    void setShortcut(const std::optional<Shortcut>& shortcut);

    void setOnChange(OnChange onChange) { onChange_ = std::move(onChange); }
    void setValidator(Validator validator) { validator_ = std::move(validator); }

    bool isRecording() const { return isRecording_; }

    /// Takes the focus and every key until a shortcut is recorded, cleared or cancelled, or until a
    /// click. Already recording, does nothing.
    void startRecording();

    CGSize intrinsicContentSize() const override { return {130, 24}; }
    bool acceptsFirstResponder() const override { return true; }
    bool acceptsFirstMouse(const NSEvent& /*event*/) const override { return true; }
    void mouseDown(const NSEvent& event) override;
    void draw(CGRect dirtyRect) override;

    ShortcutRecorderView(const ShortcutRecorderView&) = delete;
    ShortcutRecorderView& operator=(const ShortcutRecorderView&) = delete;

private:
    explicit ShortcutRecorderView(CGRect frame);

    void setRecording(bool isRecording);
    void endRecording();
    void addMonitors();
    void removeMonitors();
    bool handle(const NSEvent& event);
    void record(const Shortcut& candidate);
    void change(const std::optional<Shortcut>& shortcut);
    bool holds(const NSEvent& click) const;
    void drawBox() const;
    void drawText() const;

    std::optional<Shortcut> shortcut_;
    OnChange onChange_;
    Validator validator_;
    bool isRecording_ = false;
    NSEventModifierFlags liveModifiers_ = 0; ///< held now, while recording
    std::optional<NSEvent::Monitor> keyMonitor_;
    std::optional<NSEvent::Monitor> clickMonitor_;
};

} // namespace tsy

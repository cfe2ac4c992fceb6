// The one window that the program makes, its form and its fields: what they show, and what the user
// does with them. A form is always shown as the model is at that moment.
#pragma once

#include "Platform/AppKit/NSWindow.h"
#include "Simulated/State.h"

#include <set>

struct NSView::Peer {
    CGRect frame; ///< in its window
    bool needsDisplay = true;
    std::weak_ptr<NSWindow> window;
};

struct NSWindow::Peer {
    std::map<std::string, std::shared_ptr<NSView>> fields; ///< by the rows that they stand in
    const NSView* firstResponder = nullptr;
};

namespace simulated {

/// The views of a form, outer ones first, each with the text of the labelled row that it is in.
std::vector<std::pair<std::string, const Forms::View*>> viewsOf(const Forms::Form& form);

/// Sections, and below them what is shown in their rows, a line for each control or text. Fields
/// show their text. `localized` becomes the texts that are looked up among the translations.
std::string shownForm(std::set<std::string>* localized = nullptr);

/// Chooses an entry of the picker with this label or in the row with this one. Nothing happens when
/// it is disabled; throws when there is none.
void pick(const std::string& label, const std::string& entry);

/// Flips the toggle with this label; throws when there is none.
void flip(const std::string& label);

/// Presses the button with this title; throws when there is none.
void pushButton(const std::string& title);

/// The program's own view in the row with this label.
NSView& field(const std::string& row);

/// What the view draws now.
const Drawing& drawn(NSView& view);

/// Types a key, or presses and releases modifiers. The log names what no monitor has swallowed.
void type(std::uint16_t keyCode, NSEventModifierFlags modifiers = 0,
          NSEventType type = NSEventType::keyDown);
inline void holdModifiers(NSEventModifierFlags modifiers) {
    type(0, modifiers, NSEventType::flagsChanged);
}

/// Clicks on the middle of the view, or at a place of the window, null for one of others. The log
/// names clicks that arrive where no view is.
void click(const NSView& view, NSEventType button = NSEventType::leftMouseDown);
void click(CGPoint place, NSEventType button, const std::shared_ptr<NSWindow>& window);

void closeWindow();

} // namespace simulated

// Menus are plain objects: the program builds them, the platform reads them when it shows them.
// Main thread only.
#pragma once

#include "Platform/AppKit/NSEvent.h"
#include "Platform/AppKit/NSImage.h"

#include <any>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class NSMenu;

enum class NSControlStateValue { off, on };

/// A value that an item stands for, of any type that can be copied and compared. Two are equal when
/// both are empty, or when their types and values are.
class RepresentedObject {
public:
    RepresentedObject() = default;

    template <typename T>
    explicit RepresentedObject(T value) : value_(std::move(value)), isEqual_(isEqual<T>) {}

    /// The value; null when there is none or it is of another type.
    template <typename T>
    const T* as() const {
        return std::any_cast<T>(&value_);
    }

    friend bool operator==(const RepresentedObject& left, const RepresentedObject& right) {
        return left.isEqual_ == right.isEqual_ &&
               (left.isEqual_ == nullptr || left.isEqual_(left.value_, right.value_));
    }

private:
    template <typename T>
    static bool isEqual(const std::any& left, const std::any& right) {
        return *std::any_cast<T>(&left) == *std::any_cast<T>(&right);
    }

    std::any value_;
    bool (*isEqual_)(const std::any&, const std::any&) = nullptr; ///< told apart by type
};

/// One entry of a menu. It shows the states that were set: nothing enables it automatically.
class NSMenuItem {
public:
    /// What happens when the user chooses the entry `sender`.
    using Action = std::function<void(const NSMenuItem& sender)>;

    /// An enabled entry without a mark. Without an action choosing it does nothing. `keyEquivalent`
    /// is one character or empty; keys without a character have one of the range U+F700 to U+F8FF.
    NSMenuItem(std::string title, Action action, std::string keyEquivalent)
        : title_(std::move(title)),
          action_(std::move(action)),
          keyEquivalent_(std::move(keyEquivalent)) {}

    /// A line between entries.
    static std::shared_ptr<NSMenuItem> separatorItem() {
        auto item = std::make_shared<NSMenuItem>("", nullptr, "");
        item->isSeparator_ = true;
        return item;
    }

    bool isSeparatorItem() const { return isSeparator_; }
    const std::string& title() const { return title_; }
    const Action& action() const { return action_; }

    bool isEnabled() const { return isEnabled_; }
    void setEnabled(bool isEnabled) { isEnabled_ = isEnabled; }

    /// Whether a checkmark stands beside the title.
    NSControlStateValue state() const { return state_; }
    void setState(NSControlStateValue state) { state_ = state; }

    const RepresentedObject& representedObject() const { return representedObject_; }
    void setRepresentedObject(RepresentedObject object) { representedObject_ = std::move(object); }

    /// Null when the entry has no picture.
    const std::shared_ptr<NSImage>& image() const { return image_; }
    void setImage(std::shared_ptr<NSImage> image) { image_ = std::move(image); }

    const std::string& keyEquivalent() const { return keyEquivalent_; }
    void setKeyEquivalent(std::string key) { keyEquivalent_ = std::move(key); }

    /// The modifiers that go with the key equivalent. Nothing until set: it is then a menu bar's
    /// key, pressed with the command key, which works only where there is a menu bar.
    const std::optional<NSEventModifierFlags>& keyEquivalentModifierMask() const {
        return keyEquivalentModifierMask_;
    }
    void setKeyEquivalentModifierMask(NSEventModifierFlags mask) {
        keyEquivalentModifierMask_ = mask;
    }

    /// Null when the entry opens no menu of its own.
    const std::shared_ptr<NSMenu>& submenu() const { return submenu_; }
    void setSubmenu(std::shared_ptr<NSMenu> submenu) { submenu_ = std::move(submenu); }

private:
    std::string title_;
    Action action_;
    std::string keyEquivalent_;
    std::optional<NSEventModifierFlags> keyEquivalentModifierMask_;
    RepresentedObject representedObject_;
    std::shared_ptr<NSImage> image_;
    std::shared_ptr<NSMenu> submenu_;
    NSControlStateValue state_ = NSControlStateValue::off;
    bool isEnabled_ = true;
    bool isSeparator_ = false;
};

/// Told about a menu's life, on the main thread.
class NSMenuDelegate {
public:
    virtual ~NSMenuDelegate() = default;

    /// The menu is about to be shown, as it is after this call. Once per opening.
    virtual void menuWillOpen(NSMenu& menu) = 0;
};

class NSMenu {
public:
    /// The menu does not own its delegate.
    void setDelegate(std::weak_ptr<NSMenuDelegate> delegate) { delegate_ = std::move(delegate); }
    std::shared_ptr<NSMenuDelegate> delegate() const { return delegate_.lock(); }

    void removeAllItems() { items_.clear(); }
    void addItem(std::shared_ptr<NSMenuItem> item) { items_.push_back(std::move(item)); }

    /// The entries from top to bottom.
    const std::vector<std::shared_ptr<NSMenuItem>>& itemArray() const { return items_; }

private:
    std::weak_ptr<NSMenuDelegate> delegate_;
    std::vector<std::shared_ptr<NSMenuItem>> items_;
};

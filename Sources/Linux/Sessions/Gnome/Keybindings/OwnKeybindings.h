#pragma once

#include "Linux/HotKeys/KeyCombination.h"
#include "Linux/Sessions/Gnome/Keybindings/DesktopSettings.h"

#include <memory>
#include <string>
#include <vector>

namespace tessary {

/// The list of custom keybindings with `own` in place of all that are Tessary's. What the user has
/// keeps its order.
std::vector<std::string> listWithOwn(const std::vector<std::string>& list,
                                     const std::vector<std::string>& own);

/// Tessary's entries in the desktop's list of custom keybindings, which is the user's. Each has a
/// path of its own, such as "…/custom-keybindings/tessary-4096-184/".
class OwnKeybindings {
public:
    /// Null where the desktop has no such settings.
    static std::unique_ptr<OwnKeybindings> open();

    /// Whether the list has some of ours, which may be an earlier run's.
    bool areThere() const;

    /// Whether the list has the one of this combination.
    bool isThere(const KeyCombination& combination) const;

    struct Keybinding {
        KeyCombination combination;
        std::string name; ///< that the user sees in the desktop's settings
    };

    /// Has the list hold exactly `keybindings` of ours, each of which starts the running program
    /// with an action of the combination. Writes in the background.
    void write(const std::vector<Keybinding>& keybindings);

    /// The keys that the user's own keybindings have, as the settings write them.
    std::vector<std::string> keysOfOthers() const;

private:
    explicit OwnKeybindings(std::unique_ptr<DesktopSettings> keys) : keys_(std::move(keys)) {}

    std::unique_ptr<DesktopSettings> keys_;
};

} // namespace tessary

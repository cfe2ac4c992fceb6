#include "Linux/HotKeys/HotKeys.h"

#include "Linux/HotKeys/KeyCodes.h"
#include "Platform/Foundation.h"

#include <algorithm>
#include <string>
#include <utility>

namespace tessary {

namespace {

std::string nameOf(const KeyCombination& combination) {
    return modifierNames(combination.carbonModifiers)
        .append(hardwareKeyName(combination.hardwareKey));
}

} // namespace

HotKeys& HotKeys::shared() {
    static auto& instance = *new HotKeys;
    return instance;
}

void HotKeys::setSource(HotKeySource* source) {
    source_ = source;
    if (source != nullptr)
        source->setHandlers([this](const KeyCombination& combination) { press(combination); },
                            [this] { retake(); });
}

std::list<HotKeys::HotKey>::iterator HotKeys::find(std::uint32_t virtualKey,
                                                   std::uint32_t carbonModifiers) {
    return std::ranges::find_if(hotKeys_, [&](const HotKey& hotKey) {
        return hotKey.virtualKey == virtualKey && hotKey.carbonModifiers == carbonModifiers;
    });
}

HotKeys::Answer HotKeys::add(std::uint32_t virtualKey, std::uint32_t carbonModifiers,
                             std::function<void()> pressed) {
    if (find(virtualKey, carbonModifiers) != hotKeys_.end())
        return Answer::refused;
    HotKey hotKey{virtualKey, carbonModifiers, std::move(pressed), {}};
    const Answer answer = take(hotKey);
    if (answer == Answer::taken)
        hotKeys_.push_back(std::move(hotKey));
    return answer;
}

HotKeys::Answer HotKeys::take(HotKey& hotKey) {
    hotKey.combinations.clear();
    std::vector<KeyCombination> refused;
    for (const std::uint8_t key : hardwareKeys(hotKey.virtualKey)) {
        const KeyCombination combination{key, hotKey.carbonModifiers};
        const Answer answer = source_->take(combination);
        if (answer == Answer::taken)
            hotKey.combinations.push_back(combination);
        else if (answer == Answer::refused)
            refused.push_back(combination);
    }
    if (!hotKey.combinations.empty()) {
        report(hotKey, refused);
        return Answer::taken;
    }
    return refused.empty() ? Answer::unknown : Answer::refused;
}

/// Once when a key goes to another program and once when it is back, not at each try. Where none is
/// left the program says so.
void HotKeys::report(const HotKey& hotKey, const std::vector<KeyCombination>& refused) {
    for (const KeyCombination& combination : hotKey.combinations)
        if (std::erase(missing_, combination) > 0)
            NSLog("tessary: " + nameOf(combination) + " is free again and works");
    for (const KeyCombination& combination : refused)
        if (std::ranges::find(missing_, combination) == missing_.end()) {
            missing_.push_back(combination);
            NSLog("tessary: " + nameOf(combination) + " is taken by another program; " +
                  nameOf(hotKey.combinations.front()) + " works without it");
        }
}

void HotKeys::remove(std::uint32_t virtualKey, std::uint32_t carbonModifiers) {
    const auto hotKey = find(virtualKey, carbonModifiers);
    if (hotKey == hotKeys_.end())
        return;
    for (const KeyCombination& combination : hotKey->combinations)
        source_->giveBack(combination);
    hotKeys_.erase(hotKey);
}

void HotKeys::retake() {
    for (HotKey& hotKey : hotKeys_) {
        const bool wasOurs = !hotKey.combinations.empty();
        if (take(hotKey) != Answer::taken && wasOurs)
            NSLog("tessary: the new keymap costs a hot key");
    }
}

/// One that was given back since it was pressed is not found.
void HotKeys::press(const KeyCombination& combination) const {
    const auto hotKey = std::ranges::find_if(hotKeys_, [&](const HotKey& candidate) {
        return std::ranges::find(candidate.combinations, combination) !=
               candidate.combinations.end();
    });
    if (hotKey == hotKeys_.end())
        return;
    const auto pressed = hotKey->pressed; // it may remove the hot key
    pressed();
}

} // namespace tessary

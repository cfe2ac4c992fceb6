#include "Linux/Sessions/Gnome/Keybindings/CustomKeybindings.h"

#include "Linux/Desktop/Runtime/SessionBus.h"
#include "Platform/Foundation.h"

#include <QDBusConnectionInterface>

#include <algorithm>
#include <array>
#include <utility>

namespace tessary {

namespace {

/// Where GNOME keeps its own keys.
constexpr std::array schemasOfDesktop{"org.gnome.desktop.wm.keybindings",
                                      "org.gnome.shell.keybindings", "org.gnome.mutter.keybindings",
                                      "org.gnome.mutter.wayland.keybindings",
                                      "org.gnome.settings-daemon.plugins.media-keys"};

/// Whether the settings daemon, which starts the programs of custom keybindings, runs or can be
/// started.
bool hasDaemon() {
    const QString name = QStringLiteral("org.gnome.SettingsDaemon.MediaKeys");
    const auto& bus = SessionBus::shared().connection();
    return bus && (bus->interface()->isServiceRegistered(name) ||
                   bus->interface()->activatableServiceNames().value().contains(name));
}

} // namespace

std::unique_ptr<CustomKeybindings> CustomKeybindings::open(WaylandConnection& connection) {
    auto keybindings = hasDaemon() ? OwnKeybindings::open() : nullptr;
    if (keybindings)
        return std::unique_ptr<CustomKeybindings>(
            new CustomKeybindings(std::move(keybindings), connection));
    NSLog("tessary: this desktop has no custom keybindings; hot keys are not available");
    return nullptr;
}

CustomKeybindings::CustomKeybindings(std::unique_ptr<OwnKeybindings> keybindings,
                                     WaylandConnection& connection)
    : keybindings_(std::move(keybindings)),
      connection_(connection),
      keyboard_(DesktopSettings::open("org.gnome.desktop.peripherals.keyboard")),
      keymap_(connection) {
    keymap_.setChangedHandler([this] { renewKeymap(); });
    askAgain_.setSingleShot(true);
    QObject::connect(&askAgain_, &QTimer::timeout, [this] { askCompositor(); });
    // Behind the launch, which takes the same keys again: then there is nothing to withdraw.
    if (keybindings_->areThere())
        DispatchQueue::mainAsync([this] { scheduleWrite(); });
}

void CustomKeybindings::setHandlers(std::function<void(const KeyCombination&)> pressed,
                                    std::function<void()> changed) {
    pressed_ = std::move(pressed);
    changed_ = std::move(changed);
}

bool CustomKeybindings::isSomethingElse(std::uint8_t hardwareKey) const {
    return keymap_.isSomethingElse(hardwareKey);
}

/// The desktop would ignore a keybinding for a key of its own, and tell nobody.
bool CustomKeybindings::isOfDesktop(const KeyCombination& combination) {
    const auto symbols = keymap_.symbols(combination.hardwareKey);
    return std::ranges::any_of(acceleratorsOfDesktop(), [&](const Accelerator& accelerator) {
        return isSame(accelerator, combination, symbols);
    });
}

const std::vector<Accelerator>& CustomKeybindings::acceleratorsOfDesktop() {
    if (acceleratorsOfDesktop_)
        return *acceleratorsOfDesktop_;
    auto texts = keybindings_->keysOfOthers();
    for (const char* schema : schemasOfDesktop)
        if (const auto settings = DesktopSettings::open(schema))
            std::ranges::move(settings->allTexts(), std::back_inserter(texts));
    acceleratorsOfDesktop_.emplace();
    for (const std::string& text : texts)
        if (const auto accelerator = acceleratorOf(text))
            acceleratorsOfDesktop_->push_back(*accelerator);
    return *acceleratorsOfDesktop_;
}

CustomKeybindings::Answer CustomKeybindings::take(const KeyCombination& combination) {
    if (std::ranges::find(ours_, combination) != ours_.end())
        return Answer::taken;
    if (isSomethingElse(combination.hardwareKey))
        return Answer::unknown;
    scheduleWrite(); // which also has the desktop's keys read again
    if (isOfDesktop(combination))
        return Answer::refused;
    ours_.push_back(combination);
    return Answer::taken;
}

void CustomKeybindings::giveBack(const KeyCombination& combination) {
    if (std::erase(ours_, combination) > 0)
        scheduleWrite();
}

/// All that is taken and given back in one turn of the event loop is written together.
void CustomKeybindings::scheduleWrite() {
    if (!std::exchange(isWriteScheduled_, true))
        DispatchQueue::mainAsync([this] { write(); });
}

void CustomKeybindings::write() {
    isWriteScheduled_ = false;
    acceleratorsOfDesktop_.reset();
    std::vector<OwnKeybindings::Keybinding> keybindings;
    for (const KeyCombination& combination : ours_)
        keybindings.push_back(
            {combination,
             "Tessary: " + nameOf(combination, keymap_.symbols(combination.hardwareKey))});
    keybindings_->write(keybindings);
}

/// A held key comes again and again, and nobody tells when it is released.
bool CustomKeybindings::perform(const std::string& action) {
    const auto combination = combinationOf(action);
    if (!combination)
        return false;
    constexpr unsigned usualDelay = 500;
    constexpr std::chrono::milliseconds slowness{500}; // of a busy computer that starts a program
    const unsigned delay = keyboard_ ? keyboard_->number("delay") : usualDelay;
    const bool isRepeat = presses_.isRepeat(*combination, std::chrono::steady_clock::now(),
                                            std::chrono::milliseconds(delay) + slowness);
    if (!isRepeat && std::ranges::find(ours_, *combination) != ours_.end()) {
        pressed_(*combination);
        restartPause(); // since what the press did may have taken longer than the pause
        askCompositor();
        isAskedAgain_ = false;
    }
    return true;
}

bool CustomKeybindings::isTakenBack(const std::string& action) const {
    const auto combination = combinationOf(action);
    return combination && !keybindings_->isThere(*combination);
}

void CustomKeybindings::restartPause() {
    presses_.restartPause(std::chrono::steady_clock::now());
}

/// A compositor that paints what a switch made gives no keys out meanwhile. It may begin to paint
/// behind its first answer, but not behind another one a few frames later.
void CustomKeybindings::askCompositor() {
    static constexpr wl_callback_listener listener{[](void* self, wl_callback*, std::uint32_t) {
        static_cast<CustomKeybindings*>(self)->takeAnswer();
    }};
    answer_.reset(wl_display_sync(connection_.display()));
    wl_callback_add_listener(answer_.get(), &listener, this);
    wl_display_flush(connection_.display());
}

void CustomKeybindings::takeAnswer() {
    constexpr std::chrono::milliseconds fewFrames{50};
    answer_.reset();
    restartPause();
    if (!std::exchange(isAskedAgain_, true))
        askAgain_.start(fewFrames);
}

void CustomKeybindings::renewKeymap() {
    acceleratorsOfDesktop_.reset();
    const auto lost = std::erase_if(ours_, [this](const KeyCombination& combination) {
        return isSomethingElse(combination.hardwareKey) || isOfDesktop(combination);
    });
    if (lost > 0)
        scheduleWrite();
    changed_();
}

void CustomKeybindings::finish() {
    ours_.clear();
    write();
    DesktopSettings::finishWriting();
}

} // namespace tessary

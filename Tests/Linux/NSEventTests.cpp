#include "Linux/Desktop/Events/KeyEvents.h"
#include "Linux/Desktop/Windows/WindowWidget.h"
#include "Linux/TestApplication.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <linux/input-event-codes.h>

#include <utility>

namespace tessary {
namespace {

constexpr auto press = QEvent::KeyPress;
constexpr auto release = QEvent::KeyRelease;

/// Modifier flags by their letters.
std::string text(NSEventModifierFlags flags) {
    std::string result;
    for (const auto& [bit, letter] :
         {std::pair(16U, "L"), {17U, "S"}, {18U, "C"}, {19U, "O"}, {20U, "M"}})
        result += (flags >> bit & 1U) != 0 ? letter : "";
    return result;
}

std::string text(const std::optional<NSEvent>& event) {
    if (!event)
        return "nothing";
    return (event->type == NSEventType::keyDown ? "down " : "flags ") +
           std::to_string(event->keyCode) + " " + text(event->modifierFlags);
}

struct Key {
    QEvent::Type type = press;
    quint32 place = 0;  ///< the kernel's
    quint32 symbol = 0; ///< X11/keysymdef.h
    int key = 0;        ///< what the toolkit takes it for
    Qt::KeyboardModifiers before = {};
    quint32 state = 0; ///< the X server's modifiers
    bool isRepeat = false;

    QKeyEvent event() const {
        return {type, key, before, place + 8, symbol, state, QString(), isRepeat};
    }
};

struct KeyEvents : testing::Test { // which belong to the application's keyboard
    TestApplication<QApplication> application;
};

TEST_F(KeyEvents, TellKeysByTheirPlaceAndModifiersAfterTheEvent) {
    // clang-format off
    const std::vector<std::pair<Key, std::string>> rows{
        {{press, KEY_Y, 'z', Qt::Key_Z}, "down 16 "},
        {{press, KEY_K, 'k', Qt::Key_K, Qt::ControlModifier | Qt::AltModifier, 2}, "down 40 LCO"},
        {{press, KEY_SYSRQ, 0xFF61, Qt::Key_Print, Qt::MetaModifier}, "down 105 M"},
        {{press, KEY_KP7, 0xFF95, Qt::Key_Home, Qt::KeypadModifier | Qt::ShiftModifier}, "down 89 S"},
        {{press, KEY_INSERT, 0xFF63, Qt::Key_Insert}, "down 114 "},
        {{press, KEY_COMPOSE, 0xFF67, Qt::Key_Menu}, "down 110 "},
        {{press, KEY_CAMERA, 0x1008FF80, 0}, "nothing"}, {{press, 300, 'a', Qt::Key_A}, "nothing"},
        {{release, KEY_A, 'a', Qt::Key_A}, "nothing"},
        {{press, KEY_A, 'a', Qt::Key_A, {}, 0, true}, "nothing"},
        {{press, KEY_LEFTSHIFT, 0xFFE1, Qt::Key_Shift}, "flags 56 S"},
        {{release, KEY_LEFTSHIFT, 0xFFE1, Qt::Key_Shift, Qt::ShiftModifier | Qt::MetaModifier},
         "flags 56 M"},
        {{press, KEY_RIGHTMETA, 0xFFEC, Qt::Key_Meta, Qt::ControlModifier}, "flags 54 CM"},
        // Alt beside Shift, which the toolkit takes for Super; beside Shift it may switch the layout
        {{press, KEY_LEFTALT, 0xFFE7, Qt::Key_Meta, Qt::ShiftModifier}, "flags 58 SO"},
        {{press, KEY_LEFTALT, 0xFE08, Qt::Key_unknown, Qt::ShiftModifier}, "flags 58 SO"},
        {{press, KEY_LEFTALT, 0xFFEB, Qt::Key_Meta}, "flags 55 M"}, // swapped with Super
        {{press, KEY_RIGHTALT, 0xFE03, Qt::Key_AltGr}, "flags 61 "},
        {{press, KEY_CAPSLOCK, 0xFFE5, Qt::Key_CapsLock}, "flags 57 L"},
        {{release, KEY_CAPSLOCK, 0xFFE5, Qt::Key_CapsLock, {}, 2}, "flags 57 L"},
        {{press, KEY_CAPSLOCK, 0xFFE3, Qt::Key_Control}, "flags 59 C"}};
    // clang-format on
    for (const auto& [key, expected] : rows)
        EXPECT_EQ(text(keyEvent(key.event())), expected) << key.place << ' ' << key.symbol;
}

/// A window that notes what reaches it.
template <typename Base>
struct Window : Base {
    using Base::Base;
    bool event(QEvent* event) override {
        const auto type = event->type();
        reached += type == press                      ? "press "
                   : type == release                  ? "release "
                   : type == QEvent::MouseButtonPress ? "click "
                                                      : "";
        return Base::event(event);
    }
    std::string reached;
};

struct Model : ObservableObject {};

struct MonitorTest : KeyEvents {
    MonitorTest() { window.show(); }
    void TearDown() override { stop(); }

    void watch(NSEvent::Passage passage) {
        const auto note = [this, passage](const NSEvent& event) {
            seen += std::to_string(static_cast<int>(event.type)) + " ";
            if (event.keyCode == 53)
                stop();
            return passage;
        };
        monitor = NSEvent::addLocalMonitorForEventsMatchingMask(0x140A, note);
    }
    void stop() { NSEvent::removeMonitor(*std::exchange(monitor, 0)); }

    /// Whether the event was accepted.
    bool send(QEvent::Type type, quint32 place = KEY_A, bool isRepeat = false, bool isLater = true,
              QWidget* to = nullptr) {
        QKeyEvent event = Key{type, place, 'a', Qt::Key_A, {}, 0, isRepeat}.event();
        event.setTimestamp(time += isLater ? 1 : 0);
        event.setAccepted(false);
        QCoreApplication::sendEvent((to != nullptr ? to : &window)->windowHandle(), &event);
        return event.isAccepted();
    }
    static void click(QWidget& window, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(QEvent::MouseButtonPress, {1, 2}, {1, 2}, button, button, {});
        QCoreApplication::sendEvent(window.windowHandle(), &event);
    }

    quint64 time = 0;
    std::shared_ptr<NSWindow> program = NSWindow::windowWithContentViewController(
        NSHostingController::make([] { return Forms::Form{}; }, std::make_shared<Model>()));
    Window<WindowWidget> window{program};
    std::string seen;
    std::optional<NSEvent::Monitor> monitor = 0;
};

TEST_F(MonitorTest, SeesEachEventOnceAndLetsPassWhatItDoesNotSwallow) {
    watch(NSEvent::Passage::passOn);
    for (const auto type : {press, release})
        send(type);
    for (const auto button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
        click(window, button);
    EXPECT_EQ(seen, "10 1 3 ");
    EXPECT_EQ(window.reached, "press release click click click ");
}

TEST_F(MonitorTest, SwallowedKeysReachNoWindowUntilTheyAreReleased) {
    send(press, KEY_B);
    watch(NSEvent::Passage::swallow);
    send(release, KEY_B);
    EXPECT_EQ(std::exchange(window.reached, ""), "press release ") << "pressed before";
    EXPECT_TRUE(send(QEvent::ShortcutOverride)) << "no shortcut may act instead";
    send(press);
    send(press, KEY_A, true);
    send(release);
    send(press, KEY_A, false, false); // a repetition, though not called one
    send(press, KEY_CAMERA);          // the program has no name for it
    send(press, KEY_ESC);             // ends the monitor
    EXPECT_EQ(seen, "10 10 ");
    EXPECT_TRUE(send(QEvent::ShortcutOverride, KEY_ESC));
    send(press, KEY_ESC, true);
    send(release, KEY_ESC);
    send(press, KEY_ESC, false, false);
    for (const quint32 key : std::initializer_list<quint32>{KEY_ESC, KEY_CAMERA, KEY_A})
        send(release, key);
    EXPECT_EQ(window.reached, "");
    EXPECT_FALSE(send(QEvent::ShortcutOverride));
    send(press);
    EXPECT_EQ(window.reached, "press ");
}

TEST_F(MonitorTest, SeesNothingOfTheUpdateFrameworksWindows) {
    Window<QWidget> update;
    update.show();
    watch(NSEvent::Passage::swallow);
    send(press);
    click(update);
    send(press, KEY_B, false, true, &update);
    send(press, KEY_A, true, true, &update); // still swallowed
    EXPECT_EQ(update.reached, "click press ");
    EXPECT_EQ(seen, "10 ");
    for (QWidget* owner : {static_cast<QWidget*>(&update), static_cast<QWidget*>(nullptr)}) {
        QWidget menu(owner, Qt::Popup);
        menu.show();
        click(menu);
    }
    EXPECT_EQ(seen, "10 1 ") << "the program's own menu";
}

} // namespace
} // namespace tessary

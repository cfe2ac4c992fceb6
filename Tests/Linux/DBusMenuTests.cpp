#include "Linux/Desktop/StatusItem/DBusMenu.h"
#include "Linux/Desktop/StatusItem/MenuText.h"
#include "Linux/TestApplication.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusPendingCall>
#include <QDBusServer>
#include <QDebug>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <climits>
#include <tuple>

namespace tessary {
namespace {

using Item = std::shared_ptr<NSMenuItem>;
using Items = std::vector<Item>;

/// An error's name; else what the answer holds, with its signature.
std::string text(const QDBusMessage& answer) {
    if (answer.type() == QDBusMessage::ErrorMessage)
        return answer.errorName().toStdString();
    QString text;
    QDebug(&text) << answer;
    const QRegularExpression noise(QStringLiteral(R"([][": ]|Argument: \S+|Variant)"));
    text = text.section(QStringLiteral("contents="), 1).remove(noise).chopped(1);
    return (answer.signature() + u' ' + text).toStdString();
}

std::string text(const MenuProperties& properties) {
    std::string result;
    for (const auto& [name, value] : properties)
        result += (result.empty() ? "" : " ") + name.toStdString() + "=" +
                  (name == u"shortcut" ? value.value<QList<QStringList>>()[0].join(u'+')
                                       : value.toString())
                      .toStdString();
    return result;
}

std::string ids(const std::vector<MenuEntry>& entries) {
    std::string result;
    for (const auto& [id, item, properties, children] : entries)
        result += " " + std::to_string(id) + (children.empty() ? "" : "[" + ids(children) + " ]");
    return result;
}

Item item(const std::string& title, int object = 0) {
    auto result = std::make_shared<NSMenuItem>(title, nullptr, "");
    if (object != 0)
        result->setRepresentedObject(RepresentedObject(object));
    return result;
}

// clang-format off
Item disabled(Item item) { item->setEnabled(false); return item; }
Item marked(Item item) { item->setState(NSControlStateValue::on); return item; }
// clang-format on

Item keyed(const std::string& key, NSEventModifierFlags modifiers) {
    Item result = item("");
    result->setKeyEquivalent(key);
    result->setKeyEquivalentModifierMask(modifiers);
    return result;
}

Item parent(Item item, const Items& children) {
    const auto submenu = std::make_shared<NSMenu>();
    for (const Item& child : children)
        submenu->addItem(child);
    item->setSubmenu(submenu);
    return item;
}

/// A program whose menu holds `entries` from its next opening on.
struct DBusMenuTest : testing::Test, NSMenuDelegate {
    void menuWillOpen(NSMenu& opened) override {
        ++openings;
        opened.removeAllItems();
        for (const Item& entry : entries)
            opened.addItem(entry);
    }

    ~DBusMenuTest() override { QCoreApplication::processEvents(); }

    void show(Items first) {
        entries = std::move(first);
        menuWillOpen(*menu);
        openings = 0;
        menu->setDelegate(delegate);
        const auto propertiesChanged = [this](const std::vector<MenuPropertiesChange>& changes) {
            for (const auto& [id, changed, removed] : changes)
                heard += std::to_string(id) + "{" + text(changed) + "}" +
                         removed.join(u'-').toStdString() + " ";
        };
        shown = std::make_unique<MenuExport>(
            menu, MenuObserver{propertiesChanged, [this](unsigned revision) {
                                   heard += "layout " + std::to_string(revision) + " ";
                               }});
    }

    /// What the host hears when the menu is opened with these entries.
    std::string reopen(Items next) {
        entries = std::move(next);
        heard.clear();
        heard += *shown->aboutToShow(0) ? "update" : "";
        QCoreApplication::processEvents();
        return heard;
    }

    TestApplication<QCoreApplication> application;
    std::shared_ptr<NSMenuDelegate> delegate{this, [](const NSMenuDelegate*) {}};
    std::shared_ptr<NSMenu> menu = std::make_shared<NSMenu>();
    Items entries;
    int openings = 0;
    std::string heard;
    std::unique_ptr<MenuExport> shown;
};

TEST(MenuProperties, SayWhatDiffersFromTheDefaultsInPlainText) {
    // clang-format off
    const std::vector<std::pair<Item, std::string>> rows{
        {NSMenuItem::separatorItem(), "type=separator"},
        {item("A_B & <b>C</b>"), "label=A__B & <b>C</b>"},
        {item("a\n\t\x1B[\x7F\u0085\u2028\u2029b\xFF"), "label=a   [    b\uFFFD"},
        {disabled(item("A")), "label=A enabled=false"},
        {marked(item("A")), "label=A toggle-type=checkmark toggle-state=1"},
        {item("A", 1), "label=A toggle-type=checkmark toggle-state=0"},
        {parent(item("A"), {}), "label=A children-display=submenu"},
        {keyed("\uF711", 5U << 18U), "shortcut=Control+Super+F14"},
        {keyed("q", 15U << 17U), "shortcut=Control+Alt+Shift+Super+q"},
        {keyed("\uF72C", 0), "shortcut=Page_Up"}, {keyed("\uF726", 0), "shortcut=F35"},
        {keyed(",", 0), "shortcut=comma"}, {keyed("é", 0), ""}, {keyed("", 1U << 18U), ""},
        {std::make_shared<NSMenuItem>("Quit", nullptr, "q"), "label=Quit"}};
    // clang-format on
    for (const auto& [entry, properties] : rows)
        EXPECT_EQ(text(menuProperties(*entry)), properties);
    EXPECT_EQ(menuLabel("A_B & C", u'&'), QStringLiteral("A_B && C"));
}

TEST_F(DBusMenuTest, EntriesKeepTheirIdAtTheSamePlaceWithTheSameTitleAndHostsHearWhatChanged) {
    show({item("A"), marked(item("B")), parent(item("C"), {item("D"), item("E")})});
    // clang-format off
    const std::vector<std::tuple<Items, std::string, std::string>> rows{
        {{item("A"), marked(item("B")), parent(item("C"), {item("D"), item("E")})}, " 1 2 3[ 4 5 ]", ""},
        {{disabled(item("A")), item("B"), parent(item("C"), {marked(item("D")), item("E")})}, " 1 2 3[ 4 5 ]",
         "1{enabled=false} 2{}toggle-type-toggle-state 4{toggle-type=checkmark toggle-state=1} "},
        {{item("A"), item("B", 1), parent(item("C"), {item("D"), item("F")})}, " 1 6 3[ 4 7 ]",
         "1{}enabled 4{}toggle-type-toggle-state layout 2 update"},
        {{item("A"), item("B"), parent(item("G"), {item("D")})}, " 1 8 9[ 4 ]", "layout 3 update"},
        {{item("A"), item("B"), parent(item("G"), {})}, " 1 8 9", "layout 4 update"},
        {{item("B"), item("A")}, " 10 11", "layout 5 update"}};
    // clang-format on
    for (const auto& [next, expected, news] : rows) {
        EXPECT_EQ(reopen(next), news);
        EXPECT_EQ(ids(shown->entry(0)->children), expected);
    }
    EXPECT_EQ(shown->entry(9), nullptr);
}

TEST_F(DBusMenuTest, AnOpeningRebuildsOnceWhateverTheHostSays) {
    // clang-format off
    // a: AboutToShow, o: opened, c: closed, space: the next turn of the event loop; how often it
    // rebuilds; the answers to AboutToShow
    const std::vector<std::tuple<std::string, int, std::string>> rows{
        {"a a a", 3, "yes no no "}, {"o o o", 3, ""}, {"ao a o ao", 3, "yes no no "},
        {"oa oa o a", 3, "yes no no "}, {"aoc aoc", 2, "yes no "}, {"o ac oac", 2, "yes no "},
        {"oc oc", 2, ""}, {"ac oc", 2, "yes "}, {"oc a", 2, "no "}, {"oa a", 2, "yes no "},
        {"aaao", 1, "yes yes yes "}, {"ocoa o", 2, "yes "}};
    // clang-format on
    for (const auto& [habit, rebuilds, expected] : rows) {
        show({});
        entries = {item("A")};
        std::string answers;
        for (const char sign : habit) {
            if (sign == ' ')
                QCoreApplication::processEvents();
            else if (sign == 'a')
                answers += *shown->aboutToShow(0) ? "yes " : "no ";
            else
                shown->handle(
                    {0, sign == 'o' ? QStringLiteral("opened") : QStringLiteral("closed")});
        }
        EXPECT_EQ(std::tuple(openings, answers), std::tuple(rebuilds, expected)) << habit;
    }
}

TEST_F(DBusMenuTest, OnlyClicksOnEnabledEntriesThatAreStillThereAct) {
    std::string chosen;
    const auto acting = [&chosen](const std::string& title) {
        const auto note = [&chosen](const NSMenuItem& sender) { chosen += sender.title(); };
        return std::make_shared<NSMenuItem>(title, note, "");
    };
    show({acting("A"), disabled(acting("B")), parent(acting("C"), {}), NSMenuItem::separatorItem(),
          item("D")});
    QList<MenuEvent> events{{1, QStringLiteral("hovered")}};
    for (const int id : {0, 1, 2, 3, 4, 5, 6, 1, 6})
        events.push_back({id, QStringLiteral("clicked")});
    EXPECT_EQ(shown->handleGroup(events), QList<int>{6});
    EXPECT_EQ(chosen, "") << "before the host has its answer";
    reopen({acting("E")});
    EXPECT_EQ(shown->handleGroup(events), (QList<int>{1, 2, 3, 4, 5})) << "of a menu that is gone";
    QCoreApplication::processEvents();
    EXPECT_EQ(chosen, "AE") << "also an entry that has left the menu since";
    entries = {};
    const auto [updatesNeeded, unknownIds] = shown->aboutToShowGroup({6, 1, 0, 6, 0, 1});
    EXPECT_EQ(updatesNeeded, QList<int>{0});
    EXPECT_EQ(unknownIds, QList<int>{1});
}

TEST_F(DBusMenuTest, AnswersOnTheBusInTheProtocolsTypes) {
    show({parent(item("A"), {item("B"), disabled(item("C"))}), keyed(",", 0)});
    QDBusServer server;
    std::unique_ptr<DBusMenu> onBus;
    QObject::connect(&server, &QDBusServer::newConnection, [&](const QDBusConnection& peer) {
        onBus = std::make_unique<DBusMenu>(peer, QStringLiteral("/Menu"), menu);
    });
    const auto host = QDBusConnection::connectToPeer(server.address(), QStringLiteral("host"));
    const auto ask = [&host](const char* method, const QVariantList& arguments) {
        auto question = QDBusMessage::createMethodCall({}, QStringLiteral("/Menu"), {},
                                                       QString::fromLatin1(method));
        question.setArguments(arguments);
        return host.asyncCall(question);
    };
    const auto answer = [&ask](const char* method, const QVariantList& arguments) {
        const QDBusPendingCall pending = ask(method, arguments);
        EXPECT_TRUE(QTest::qWaitFor([&] { return pending.isFinished(); }, 60'000));
        return text(pending.reply());
    };
    const QStringList all;
    const QVariant ids = QVariant::fromValue(QList<int>{2, 9, 2});
    const std::string invalid = "org.freedesktop.DBus.Error.InvalidArgs";
    const std::string tooLarge = "org.freedesktop.DBus.Error.LimitsExceeded";
    // clang-format off
    const std::vector<std::tuple<const char*, QVariantList, std::string>> rows{
        {"GetLayout", {0, 1, QStringList{QStringLiteral("label")}},
         "u(ia{sv}av) (1,0,{},{1,{label=(QString)A},{},4,{},{}})"},
        {"GetLayout", {1, INT_MIN, all},
         "u(ia{sv}av) (1,1,{label=(QString)A,children-display=(QString)submenu},"
         "{2,{label=(QString)B},{},3,{label=(QString)C,enabled=(bool)false},{}})"},
        {"GetLayout", {4, 0, all}, "u(ia{sv}av) (1,4,{shortcut={{comma}}},{})"},
        {"GetLayout", {5, 0, all}, invalid}, {"GetLayout", {0}, invalid},
        {"GetGroupProperties", {ids, all}, "a(ia{sv}) ({2,{label=(QString)B}})"},
        {"GetProperty", {2, QStringLiteral("enabled")}, "v ((bool)true)"},
        {"GetProperty", {2, QString()}, invalid},
        {"AboutToShow", {0}, "b (false)"}, {"AboutToShow", {9}, invalid},
        {"AboutToShowGroup", {ids}, "aiai ({},{9})"},
        {"AboutToShowGroup", {QVariant::fromValue(QList<int>(5000))}, tooLarge}};
    // clang-format on
    for (const auto& [method, arguments, expected] : rows)
        EXPECT_EQ(answer(method, arguments), expected) << method;
    QList<QDBusPendingCall> flood;
    for (int call = 0; call < 4000; ++call)
        flood.push_back(ask("GetLayout", {0, -1, all}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return flood.last().isFinished(); }, 60'000));
    EXPECT_FALSE(flood.first().isError());
    EXPECT_GT(std::ranges::count_if(flood, &QDBusPendingCall::isError), 0) << "too much at once";
    QDBusConnection::disconnectFromPeer(QStringLiteral("host"));
}

} // namespace
} // namespace tessary

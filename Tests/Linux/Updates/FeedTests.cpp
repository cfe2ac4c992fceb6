#include "Linux/Updates/Library/Feed.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace tessary::updates;

const std::string signature = std::string(86, 'A') + "==";
const std::string enclosure = "<enclosure url='https://example.org/p' length='7' t:signature='" +
                              signature + "'/><description> News \n</description>";

std::string element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}
std::string item(const std::string& version, const std::string& more = {}) {
    return element("item", element("t:version", version) + enclosure + more);
}

QByteArray feedOf(const std::string& items) {
    return QByteArray::fromStdString(
        "<?xml version='1.0'?><rss xmlns:t='urn:x-tessary:updates'><channel><title>Feed</title>" +
        items + "</channel></rss>");
}

/// The version of the newest item above 1.9, "none" without one, "damaged" for a damaged feed.
std::string newest(const QByteArray& feed, const System& system) {
    const auto items = itemsOf(feed);
    if (!items)
        return "damaged";
    const auto newest = newestAbove(QVersionNumber(1, 9), system, *items);
    return newest ? newest->versionText.toStdString() : "none";
}

const std::string least = "t:minimumSystem";
const System unreleased{QStringLiteral("debian"), std::nullopt};

TEST(Feed, TheNewestVersionThatRunsHereIsOffered) {
    const System debian{unreleased.name, QVersionNumber(12)};
    const System arch{QStringLiteral("arch"), std::nullopt};
    const std::string good = item("1.10");
    const std::string later = good + item("9", element(least, "debian 12.1")) + good;
    // clang-format off
    const std::tuple<std::string, System, std::string> rows[]{
        {"", debian, "none"}, {good, debian, "1.10"}, {item("1.11") + good, debian, "1.11"},
        {item("1.9.0"), debian, "none"}, {item("1.8.99"), debian, "none"},
        {item("1.9.0.1") + item("1.2"), debian, "1.9.0.1"},
        {later, debian, "1.10"}, {later, {debian.name, QVersionNumber(12, 1)}, "9"},
        {later, unreleased, "9"}, {later, arch, "1.10"}, {item("2", element(least, "debian 12.0")), debian, "2"}};
    // clang-format on
    for (const auto& [items, system, expected] : rows)
        EXPECT_EQ(newest(feedOf(items), system), expected) << items;
}

TEST(Feed, NotesAreCutToWhatCanBeLaidOutInTime) {
    const auto items =
        itemsOf(feedOf(item("2", element("description", std::string(100'000, 'x')))));
    ASSERT_TRUE(items && items->size() == 1);
    EXPECT_EQ(items->front().notes.size(), 20'000);
}

TEST(Feed, ItemsThatMakeNoSenseArePassedOver) {
    // clang-format off
    const std::pair<std::string, std::string> changes[]{
        {"<t:version>3</t:version>", ""}, {"t:version", "version"}, {"enclosure", "closure"},
        {"t:sig", "sig"}, {"'7'", "'0'"}, {"'7'", "'-7'"}, {"'7'", "' 7'"}, {"'7'", "'7.5'"},
        {"'7'", "'9223372036854775808'"}, {"A==", "=="}, {"AA==", "AAAA=="}, {"AA==", "A!A=="},
        {"AA==", "A A=="}, {"https://example.org", ""}, {"https://", "http://["}};
    // clang-format on
    std::vector<std::string> rows{"<item/>"};
    for (const auto& [from, to] : changes)
        rows.push_back(QString::fromStdString(item("3"))
                           .replace(QString::fromStdString(from), QString::fromStdString(to))
                           .toStdString());
    for (const char* text : {"", "3.", "3..1", "+3", "3 ", "3-beta", "٣", "3.2147483648", "../3"})
        rows.push_back(item(text));
    for (const char* text : {"", "debian", "12", "debian trixie", "debian 12 13"})
        rows.push_back(item("3", element(least, text)));
    for (const auto& bad : rows) {
        EXPECT_EQ(newest(feedOf(bad + item("2")), unreleased), "2") << bad;
        EXPECT_EQ(newest(feedOf(bad), unreleased), "damaged") << bad;
    }
}

TEST(Feed, DamagedFeedsAreTold) {
    const QByteArray good = feedOf(item("2"));
    const auto changed = [&good](auto from, auto to) { return QByteArray(good).replace(from, to); };
    for (qsizetype length = 0; length < good.size(); ++length)
        EXPECT_EQ(newest(good.left(length), unreleased), "damaged") << length;
    for (const auto& feed : {changed("<rss", "<!DOCTYPE rss [<!ENTITY a 'b'>]><rss"), good + "&",
                             changed("rss", "atom"), changed("channel", "canal"), good + "<rss/>"})
        EXPECT_EQ(newest(feed, unreleased), "damaged") << feed.toStdString();
}

} // namespace

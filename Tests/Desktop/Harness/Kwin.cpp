#include "Desktop/Harness/Kwin.h"

#include "Desktop/Harness/Waiting.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace desktop {

namespace {

/// The installed program has a capability of the file system, which a container may not allow. A
/// copy has none.
std::filesystem::path copiedProgram(const Home& home) {
    auto copy = home.path() / "kwin_wayland";
    std::filesystem::copy_file("/usr/bin/kwin_wayland", copy,
                               std::filesystem::copy_options::overwrite_existing);
    return copy;
}

Words command(const Home& home, const Bus& bus, const char* displayName, const std::string& modes,
              const std::string& refused) {
    return home.commandOn(
        "",
        {bus.environment(), "KWIN_COMPOSE=Q", "KWIN_WAYLAND_NO_PERMISSION_CHECKS=1",
         std::string("LD_PRELOAD=") + KWIN_MODES_LIBRARY, "KWIN_TEST_MODES=" + modes,
         "KWIN_TEST_REFUSED=" + refused, copiedProgram(home).string()},
        {"--virtual", "--output-count", "2", "--no-lockscreen", "--socket", displayName});
}

QJsonObject modeWith(const QJsonObject& output, const QJsonValue& id) {
    for (const QJsonValue mode : output[u"modes"].toArray())
        if (mode[u"id"] == id)
            return mode.toObject();
    return {};
}

/// As in "1920x1080@60.000".
std::string named(const QJsonObject& mode) {
    char rate[32];
    std::snprintf(rate, sizeof rate, "%.3f", mode[u"refreshRate"].toDouble());
    return std::to_string(mode[u"size"][u"width"].toInt()) + "x" +
           std::to_string(mode[u"size"][u"height"].toInt()) + "@" + rate;
}

} // namespace

Kwin::Kwin(const Home& home, const Bus& bus, const std::string& modes, const std::string& refused)
    : home_(home), bus_(bus), process_(command(home, bus, displayName, modes, refused)) {
    const auto socket = home.path() / displayName;
    if (!waitUntil([&] {
            return process_.hasEnded() || (std::filesystem::exists(socket) && layout().size() == 2);
        }) ||
        process_.hasEnded())
        throw std::runtime_error("no KWin has started");
    if (this->modes("Virtual-0").size() < 2)
        throw std::runtime_error("KWin's outputs have not been given the modes of the test");
}

Words Kwin::doctor(const Words& arguments) const {
    ChildProcess process(
        home_.commandOn("",
                        {bus_.environment(), environment(), "KSCREEN_BACKEND_INPROCESS=1",
                         "QT_QPA_PLATFORM=wayland", "kscreen-doctor"},
                        arguments));
    return process.wait() == 0 ? process.lines() : Words();
}

bool Kwin::change(const Words& arguments) const {
    return !doctor(arguments).empty();
}

QJsonArray Kwin::outputs() const {
    QByteArray text;
    for (const std::string& line : doctor({"-j"}))
        if (!text.isEmpty() || line == "{") // before it come messages
            text += QByteArray::fromStdString(line + "\n");
    text.truncate(text.lastIndexOf("}\n") + 1);
    return QJsonDocument::fromJson(text)[u"outputs"].toArray();
}

std::vector<OfferedMode> Kwin::modes(const std::string& connector) const {
    std::vector<OfferedMode> modes;
    for (const QJsonValue output : outputs())
        if (output[u"name"].toString().toStdString() == connector)
            for (const QJsonValue mode : output[u"modes"].toArray())
                modes.push_back({mode[u"size"][u"width"].toInt(),
                                 mode[u"size"][u"height"].toInt(),
                                 mode[u"refreshRate"].toDouble(),
                                 {1, 1.25, 1.5, 1.75, 2, 2.25, 2.5, 2.75, 3},
                                 output[u"preferredModes"].toArray().contains(mode[u"id"])});
    return modes;
}

Layout Kwin::layout() const {
    Layout layout;
    for (const QJsonValue output : outputs())
        if (output[u"enabled"].toBool()) {
            std::ostringstream text;
            text << named(modeWith(output.toObject(), output[u"currentModeId"])) << " x"
                 << output[u"scale"].toDouble() << " +" << output[u"pos"][u"x"].toInt() << "+"
                 << output[u"pos"][u"y"].toInt();
            layout[output[u"name"].toString().toStdString()] = text.str();
        }
    return layout;
}

} // namespace desktop

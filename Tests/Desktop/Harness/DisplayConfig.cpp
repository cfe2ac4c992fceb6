#include "Desktop/Harness/DisplayConfig.h"

#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace desktop {

namespace {

/// What a regular expression finds, one after the other.
std::vector<std::smatch> found(const std::string& text, const std::string& expression) {
    const std::regex pattern(expression);
    return {std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()};
}

const std::string mode =
    R"re(\('([^']+)', (\d+), (\d+), ([\d.]+), [\d.]+, \[([^\]]*)\], (?:@a\{sv\} )?\{([^}]*)\}\))re";

} // namespace

std::optional<std::string> DisplayConfig::call(const std::string& method,
                                               const Words& arguments) const {
    Words words{"env",
                bus_.environment(),
                "gdbus",
                "call",
                "--session",
                "--dest",
                "org.gnome.Mutter.DisplayConfig",
                "--object-path",
                "/org/gnome/Mutter/DisplayConfig",
                "--method",
                "org.gnome.Mutter.DisplayConfig." + method};
    words.insert(words.end(), arguments.begin(), arguments.end());
    ChildProcess process(words);
    if (process.wait() != 0 || process.lines().empty())
        return std::nullopt;
    return process.lines().front();
}

std::string DisplayConfig::state() const {
    if (const auto state = call("GetCurrentState", {}))
        return *state;
    throw std::runtime_error("Mutter does not tell its monitors");
}

std::vector<OfferedMode> DisplayConfig::modes(const std::string& connector) const {
    const std::string state = this->state();
    const auto begin = state.find("(('" + connector + "'");
    const std::string monitor = state.substr(begin, state.find("((", begin + 1) - begin);
    std::vector<OfferedMode> modes;
    for (const std::smatch& match : found(monitor, mode)) {
        modes.push_back({std::stoi(match[2]),
                         std::stoi(match[3]),
                         std::stod(match[4]),
                         {},
                         match[6].str().find("preferred") != std::string::npos});
        std::istringstream scales(match[5]);
        for (std::string scale; std::getline(scales, scale, ',');)
            modes.back().scales.push_back(std::stod(scale));
    }
    return modes;
}

Layout DisplayConfig::layout() const {
    const std::string state = this->state();
    std::map<std::string, std::string> current;
    std::string connector;
    for (const std::smatch& match : found(state, R"re(\(\('([^']+)'|)re" + mode))
        if (match[1].matched)
            connector = match[1];
        else if (match[7].str().find("current") != std::string::npos)
            current[connector] = match[2];
    Layout layout;
    for (const std::smatch& match :
         found(state, R"re(\((\d+), (\d+), ([\d.]+), [^']*\[\('([^']+)')re")) {
        std::ostringstream text;
        text << current[match[4]] << " x" << std::stod(match[3]) << " +" << match[1] << "+"
             << match[2];
        layout[match[4]] = text.str();
    }
    return layout;
}

bool DisplayConfig::apply(const std::string& displays) const {
    const std::string serial = found(state(), R"re(\d+)re").at(1).str(); // behind "uint32"
    return call("ApplyMonitorsConfig", {serial, "1", "[" + displays + "]", "{}"}).has_value();
}

} // namespace desktop

#include "Linux/Desktop/Application/CommandLine.h"

#include "Linux/Files/RunningProgram.h"
#include "Linux/HotKeys/KeyCombination.h"
#include "Platform/AppKit/NSApplication.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <vector>

namespace tessary {

namespace {

constexpr const char* usage = "usage: tessary [--action NAME | --version | --help]\n";

using Actions = std::vector<NSApplicationAction>;

std::string help(const Actions& actions) {
    std::string text =
        "Switches the resolution of displays, by keys and by a menu in the panel.\n"
        "\n"
        "  --action NAME   have the Tessary that runs, or else this one, do what NAME says:\n";
    for (const auto& action : actions) {
        constexpr std::size_t widest = 13;
        const std::string gap(widest - std::min(widest, action.name.size()), ' ');
        text += "      " + action.name + gap + action.description + "\n";
    }
    return text + "  --version       print the version\n"
                  "  --help          print this\n";
}

/// What the user may ask for, or what a desktop tells by starting the program.
bool isAction(const std::string& name, const Actions& actions) {
    return std::ranges::find(actions, name, &NSApplicationAction::name) != actions.end() ||
           combinationOf(name);
}

/// Without the program's name.
std::vector<std::string> commandLine() {
    std::ifstream commandLine("/proc/self/cmdline");
    std::vector<std::string> words;
    for (std::string word; std::getline(commandLine, word, '\0');)
        words.push_back(word);
    if (!words.empty())
        words.erase(words.begin());
    return words;
}

[[noreturn]] void print(const std::string& text) {
    std::cout << text << std::flush;
    std::exit(EXIT_SUCCESS);
}

} // namespace

std::optional<std::string> actionOfCommandLineOrExit(const Actions& actions) {
    const auto words = commandLine();
    if (words.empty())
        return std::nullopt;
    if (words.size() == 2 && words[0] == "--action" && isAction(words[1], actions))
        return words[1];
    if (words.size() == 1 && words[0] == "--version")
        print("tessary " + std::string(runningVersion()) + "\n");
    if (words.size() == 1 && words[0] == "--help")
        print(usage + help(actions));
    std::cerr << usage;
    constexpr int wrongUsage = 2;
    std::exit(wrongUsage);
}

} // namespace tessary

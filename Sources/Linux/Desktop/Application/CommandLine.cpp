#include "Linux/Desktop/Application/CommandLine.h"

#include "Linux/Files/RunningProgram.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <vector>

namespace tessary {

namespace {

constexpr const char* usage = "usage: tessary [--action NAME | --version | --help]\n";

constexpr const char* help =
    "Switches the resolution of displays, by keys and by a menu in the panel.\n"
    "\n"
    "  --action NAME   have the Tessary that runs, or else this one, do what NAME says:\n"
    "                  slot-one, slot-two    switch the display under the pointer to its\n"
    "                                        first or second preset\n"
    "                  preferences           show the preferences\n"
    "  --version       print the version\n"
    "  --help          print this\n";

constexpr std::array actions{"slot-one", "slot-two", "preferences"};

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

std::optional<std::string> actionOfCommandLineOrExit() {
    const auto words = commandLine();
    if (words.empty())
        return std::nullopt;
    if (words.size() == 2 && words[0] == "--action" &&
        std::ranges::find(actions, words[1]) != actions.end())
        return words[1];
    if (words.size() == 1 && words[0] == "--version")
        print("tessary " + std::string(runningVersion()) + "\n");
    if (words.size() == 1 && words[0] == "--help")
        print(std::string(usage) + help);
    std::cerr << usage;
    constexpr int wrongUsage = 2;
    std::exit(wrongUsage);
}

} // namespace tessary

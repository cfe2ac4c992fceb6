// A settings file with any bytes in it: the settings work on, from the file or from a fresh one.
#include "Application.h"
#include "Finding.h"
#include "Scratch.h"

#include "Platform/Foundation.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>

namespace {

namespace fs = std::filesystem;

const fuzz::Scratch scratch;

fs::path folder() {
    return scratch.path() / "tessary";
}

fs::path file() {
    return folder() / "defaults.sqlite";
}

/// A file as the program writes it.
std::string wholeFile() {
    auto& defaults = NSUserDefaults::standardUserDefaults();
    defaults.setBool(true, "seeded.builtin");
    defaults.setObject(NSData(5000, 'x'), "large"); // on a page of its own
    QCoreApplication::processEvents();
    std::ifstream stream(file(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string damaged(std::string text, FuzzedDataProvider& data) {
    if (data.ConsumeBool())
        text.resize(data.ConsumeIntegralInRange<std::size_t>(0, text.size()));
    while (data.remaining_bytes() > 2 && !text.empty()) {
        const auto place = data.ConsumeIntegralInRange<std::size_t>(0, text.size() - 1);
        const std::string patch = data.ConsumeRandomLengthString(16);
        text.replace(place, patch.size(), patch);
    }
    return text;
}

/// Another file in its place, as a restored copy is.
void replaceFile(const std::string& contents) {
    for (const auto& entry : fs::directory_iterator(folder()))
        if (entry.path() != file())
            fs::remove(entry.path());
    const auto fresh = scratch.path() / "fresh";
    std::ofstream(fresh, std::ios::binary) << contents;
    fs::rename(fresh, file());
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    ::setenv("XDG_CONFIG_HOME", scratch.path().c_str(), 1);
    fuzz::needApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static const std::string& whole = *new std::string(wholeFile());
    FuzzedDataProvider data(bytes, size);
    const auto number = data.ConsumeIntegral<std::uint64_t>();
    replaceFile(damaged(whole, data));
    auto& defaults = NSUserDefaults::standardUserDefaults();
    defaults.boolForKey("seeded.builtin");
    defaults.dataForKey("large");
    const std::string text = std::to_string(number);
    const NSData value(text.begin(), text.end());
    defaults.setObject(value, "key");
    fuzz::hold(defaults.dataForKey("key") == value, "what was written is read");
    QCoreApplication::processEvents();
    fuzz::hold(defaults.dataForKey("key") == value,
               "what was written is read after the event, too");
    return 0;
}

// Is loaded into KWin 5.27 before its own libraries (LD_PRELOAD), whose virtual outputs have one
// mode only. Gives each of them the modes of KWIN_TEST_MODES, as in
// "1920x1080@60000,1280x720@59940" with rates in thousandths of hertz and the preferred mode first,
// and has those of the size KWIN_TEST_REFUSED refused. KWin's library calls its own exported
// functions by name, so that these here are called instead. Their parameters are declared here as
// far as they are used: they begin like those of that version.
#include <QFlags>
#include <QList>
#include <QPoint>
#include <QSize>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <dlfcn.h>

namespace KWin {

class OutputMode {
public:
    enum class Flag : std::uint32_t { Preferred = 1 };

    OutputMode(const QSize& size, std::uint32_t refreshRate, QFlags<Flag> flags);
    QSize size() const;

private: // so much memory does its constructor fill
    [[maybe_unused]] QSize size_;
    [[maybe_unused]] std::uint32_t refreshRate_;
    [[maybe_unused]] QFlags<Flag> flags_;
};

struct OutputChangeSet {
    std::weak_ptr<OutputMode> mode;
};

class Output;

class OutputConfiguration {
public:
    std::shared_ptr<OutputChangeSet> constChangeSet(Output* output) const;
};

class Output {
public:
    struct State {
        QPoint position;
        double scale;
        int transform;
        QList<std::shared_ptr<OutputMode>> modes;
        std::shared_ptr<OutputMode> currentMode;
    };

    void applyChanges(const OutputConfiguration& configuration);
};

class OutputBackend {
public:
    bool applyOutputChanges(const OutputConfiguration& configuration);
};

/// Output::setState. There the state is constant, but a copy would lack what is not declared here.
void setState(Output* output,
              Output::State& state) __asm__("_ZN4KWin6Output8setStateERKNS0_5StateE");

namespace {

QList<Output*> outputs;
std::shared_ptr<OutputMode> chosen; // for the output that is being changed

/// KWin's own function of this name.
template <typename Function>
Function* own(const char* name) {
    void* address = dlsym(RTLD_NEXT, name);
    Function* function = nullptr;
    std::memcpy(&function, &address, sizeof function);
    return function;
}

void addModes(Output::State& state) {
    const char* text = std::getenv("KWIN_TEST_MODES");
    int width = 0;
    int height = 0;
    unsigned rate = 0;
    int length = 0;
    while (text != nullptr &&
           std::sscanf(text, "%dx%d@%u%n", &width, &height, &rate, &length) == 3) {
        const bool isFirst = state.modes.size() == 1;
        const auto mode = std::make_shared<OutputMode>(
            QSize(width, height), rate, QFlags<OutputMode::Flag>(QFlag(isFirst ? 1 : 0)));
        state.modes.push_back(mode);
        if (isFirst)
            state.currentMode = mode;
        text += length + (text[length] == ',' ? 1 : 0);
    }
}

/// Null where the output keeps its mode.
std::shared_ptr<OutputMode> modeFor(Output* output, const OutputConfiguration& configuration) {
    const auto changes = configuration.constChangeSet(output);
    return changes ? changes->mode.lock() : nullptr;
}

} // namespace

void setState(Output* output, Output::State& state) {
    if (state.modes.size() == 1)
        addModes(state);
    if (chosen)
        state.currentMode = chosen;
    if (!outputs.contains(output))
        outputs.push_back(output);
    own<void(Output*, const Output::State&)>("_ZN4KWin6Output8setStateERKNS0_5StateE")(output,
                                                                                       state);
}

void Output::applyChanges(const OutputConfiguration& configuration) {
    chosen = modeFor(this, configuration);
    own<void(Output*, const OutputConfiguration&)>(
        "_ZN4KWin6Output12applyChangesERKNS_19OutputConfigurationE")(this, configuration);
    chosen.reset();
}

bool OutputBackend::applyOutputChanges(const OutputConfiguration& configuration) {
    int width = 0;
    int height = 0;
    const char* refused = std::getenv("KWIN_TEST_REFUSED");
    if (refused != nullptr && std::sscanf(refused, "%dx%d", &width, &height) == 2)
        for (Output* output : outputs)
            if (const auto mode = modeFor(output, configuration);
                mode && mode->size() == QSize(width, height))
                return false;
    return own<bool(OutputBackend*, const OutputConfiguration&)>(
        "_ZN4KWin13OutputBackend18applyOutputChangesERKNS_19OutputConfigurationE")(this,
                                                                                   configuration);
}

} // namespace KWin

// Values of any type under the program's own keys, written by another program while it runs.
#include "Application.h"
#include "Finding.h"
#include "Scratch.h"

#include "TSY/Settings.h"

#include <QCoreApplication>

#include <cstddef>
#include <cstdint>
#include <string>

#include <fuzzer/FuzzedDataProvider.h>
#include <sqlite3.h>

namespace {

const fuzz::Scratch scratch;

enum class Type { none, null, integer, real, text, data, kMaxValue = data };

struct Value {
    Type type = Type::none;
    std::int64_t integer = 0;
    std::string bytes;
};

/// Another program that has the settings file open.
class Writer {
public:
    explicit Writer(const std::filesystem::path& file) {
        sqlite3_open_v2(file.c_str(), &database_, SQLITE_OPEN_READWRITE, nullptr);
        sqlite3_exec(database_, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
        sqlite3_prepare_v2(database_, "INSERT OR REPLACE INTO defaults VALUES(?, ?)", -1, &insert_,
                           nullptr);
        sqlite3_prepare_v2(database_, "DELETE FROM defaults WHERE key = ?", -1, &remove_, nullptr);
        fuzz::hold(insert_ != nullptr && remove_ != nullptr, "the settings file is a database");
    }

    void write(const std::string& key, const Value& value) const {
        sqlite3_stmt* statement = value.type == Type::none ? remove_ : insert_;
        sqlite3_bind_text(statement, 1, key.data(), static_cast<int>(key.size()), nullptr);
        bind(statement, value);
        fuzz::hold(sqlite3_step(statement) == SQLITE_DONE, "others can write");
        sqlite3_reset(statement);
    }

private:
    static void bind(sqlite3_stmt* statement, const Value& value) {
        const int size = static_cast<int>(value.bytes.size());
        if (value.type == Type::null)
            sqlite3_bind_null(statement, 2);
        else if (value.type == Type::integer)
            sqlite3_bind_int64(statement, 2, value.integer);
        else if (value.type == Type::real)
            sqlite3_bind_double(statement, 2, static_cast<double>(value.integer) / 3);
        else if (value.type == Type::text)
            sqlite3_bind_text(statement, 2, value.bytes.data(), size, nullptr);
        else if (value.type == Type::data)
            sqlite3_bind_blob(statement, 2, value.bytes.data(), size, nullptr);
    }

    sqlite3* database_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    sqlite3_stmt* remove_ = nullptr;
};

Value valueFrom(FuzzedDataProvider& data) {
    return {data.ConsumeEnum<Type>(), data.ConsumeIntegral<std::int64_t>(),
            data.ConsumeRandomLengthString()};
}

/// The file comes with the first value that the program sets.
const Writer& openedWriter() {
    NSUserDefaults::standardUserDefaults().setBool(true, "seeded.first");
    QCoreApplication::processEvents();
    return *new Writer(scratch.path() / "tessary" / "defaults.sqlite");
}

NSData dataOf(const Value& value) {
    return {value.bytes.begin(), value.bytes.end()};
}

std::optional<tsy::ModeSpec> expectedSpec(const Value& value) {
    if (value.type != Type::data || value.bytes.empty())
        return std::nullopt;
    return tsy::ModeSpec::fromJSON(dataOf(value));
}

std::optional<tsy::Shortcut> expectedShortcut(const Value& value) {
    if (value.type != Type::data)
        return tsy::Shortcut{107, 0}; // F14, which the first slot has until one is set
    return value.bytes.empty() ? std::nullopt : tsy::Shortcut::fromJSON(dataOf(value));
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*count*/, char*** /*arguments*/) {
    ::setenv("XDG_CONFIG_HOME", scratch.path().c_str(), 1);
    fuzz::needApplication();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    auto& settings = tsy::Settings::shared();
    static const Writer& writer = openedWriter();
    FuzzedDataProvider data(bytes, size);
    const Value mode = valueFrom(data);
    const Value shortcut = valueFrom(data);
    const Value mark = valueFrom(data);
    writer.write("mode.builtin.two", mode);
    writer.write("shortcut.one", shortcut);
    writer.write("seeded.builtin", mark);
    fuzz::hold(settings.spec(tsy::Slot::two, "builtin") == expectedSpec(mode),
               "a preset is what stands there as data");
    fuzz::hold(settings.shortcut(tsy::Slot::one) == expectedShortcut(shortcut),
               "a shortcut is what stands there as data");
    fuzz::hold(NSUserDefaults::standardUserDefaults().boolForKey("seeded.builtin") ==
                   (mark.type == Type::integer && mark.integer != 0),
               "a mark is an integer other than 0");
    QCoreApplication::processEvents();
    return 0;
}

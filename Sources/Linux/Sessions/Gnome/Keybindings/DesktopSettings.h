#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tessary {

/// The desktop's settings of one schema (GSettings). The library for them is opened for the first
/// one: linked, it would cost every start of the program 2 ms and 0.9 MiB.
class DesktopSettings {
public:
    /// `path` is for a schema that has no path of its own. Null where the desktop lacks the schema.
    static std::unique_ptr<DesktopSettings> open(const std::string& schema,
                                                 const std::string& path = {});
    ~DesktopSettings();

    /// The value of a key. Empty, or 0, where the schema has no such key of this type.
    std::vector<std::string> list(const std::string& key) const;
    std::string text(const std::string& key) const;
    unsigned number(const std::string& key) const;

    /// The values of all keys that hold texts, each element of a list by itself.
    std::vector<std::string> allTexts() const;

    /// Has a value written in the background, if it is another than before. It holds for the reads
    /// at once.
    void setList(const std::string& key, const std::vector<std::string>& value);
    void setText(const std::string& key, const std::string& value);

    /// Has all keys forgotten in the background, as if nobody had ever written them.
    void reset();

    /// Waits until all that was to be written is stored.
    static void finishWriting();

    DesktopSettings(const DesktopSettings&) = delete;
    DesktopSettings& operator=(const DesktopSettings&) = delete;

private:
    struct Opened;

    explicit DesktopSettings(std::unique_ptr<Opened> opened);

    bool has(const std::string& key, const char* type) const;
    std::vector<std::string> keys() const;

    std::unique_ptr<Opened> opened_;
};

} // namespace tessary

// Settings database, notifications, main queue, JSON of records, log.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

/// A byte string. An empty one is a value like any other.
using NSData = std::vector<std::uint8_t>;

/// Writes one line to the log. Never fails.
void NSLog(std::string_view line);

/// The user's settings of this application. Every read answers what the database holds now,
/// whichever program wrote it. Every write holds for the reads at once; all writes of one event are
/// saved together when it has been handled. What cannot be saved then is kept and tried again, with
/// one line in the log. When a boolean was found false only because the database could not be read,
/// the writes that follow in the same event are dropped. Main thread only.
class NSUserDefaults {
public:
    /// The application's database, opened on first use and kept for the life of the process.
    static NSUserDefaults& standardUserDefaults();

    /// The data under `key`; nothing when the key is absent or holds another type of value. While
    /// the database cannot be read, what was known last.
    std::optional<NSData> dataForKey(std::string_view key) const;

    /// Stores data under `key`, replacing what was there.
    void setObject(const NSData& data, std::string_view key);

    /// The boolean under `key`; false when the key is absent or holds another type of value. While
    /// the database cannot be read, what was known last.
    bool boolForKey(std::string_view key) const;

    /// Stores a boolean under `key`, replacing what was there.
    void setBool(bool value, std::string_view key);

    /// Deletes `key`. An absent one is no failure.
    void removeObjectForKey(std::string_view key);

    NSUserDefaults(const NSUserDefaults&) = delete;
    NSUserDefaults& operator=(const NSUserDefaults&) = delete;

private:
    NSUserDefaults() = default;
    ~NSUserDefaults() = default;
};

/// The queue of tasks that the event loop runs on the main thread.
class DispatchQueue {
public:
    /// Runs `task` later from the event loop, in the order of submission and never from within this
    /// call. May be called on any thread.
    static void mainAsync(std::function<void()> task);
};

/// Named events inside the process, without sender and without content.
class NSNotificationCenter {
public:
    using Token = std::uint64_t;

    static NSNotificationCenter& defaultCenter();

    /// Has `block` called on the main thread for each later post of `name`, until `removeObserver`.
    Token addObserverForName(std::string_view name, std::function<void()> block);

    /// Ends an observation. An unknown token is no failure.
    void removeObserver(Token token);

    /// From the main thread: calls the observers at once, in the order of their registration; an
    /// observer that one of them adds is not called, one that is removed meanwhile is skipped. From
    /// another thread: submits this post to the main queue.
    void post(std::string_view name);

    NSNotificationCenter(const NSNotificationCenter&) = delete;
    NSNotificationCenter& operator=(const NSNotificationCenter&) = delete;

private:
    struct Observation {
        std::string name;
        std::function<void()> block;
    };

    NSNotificationCenter() = default;
    ~NSNotificationCenter() = default;

    std::map<Token, std::shared_ptr<const Observation>> observations_;
    Token lastToken_ = 0;
};

/// A record's member in its JSON form.
using JSONValue = std::variant<std::int64_t, std::uint64_t, bool>;

/// Writes a record as one JSON object: members in the given order, no white space.
NSData JSONEncode(std::initializer_list<std::pair<std::string_view, JSONValue>> members);

/// A record read from its JSON form. Strict JSON: no comments, no byte-order mark, nothing behind
/// the object. Unknown members are ignored; of a member that stands there twice the last counts.
class JSONRecord {
public:
    /// Nothing when `data` is not exactly one JSON object.
    static std::optional<JSONRecord> decode(const NSData& data);

    /// The member `name`; nothing when it is missing, is not an integer literal or does not fit
    /// `T`.
    template <typename T>
    std::optional<T> integer(const std::string& name) const {
        const auto member = members_.find(name);
        if (member == members_.end())
            return std::nullopt;
        if (const auto* number = std::get_if<std::int64_t>(&member->second))
            return fitted<T>(*number);
        if (const auto* number = std::get_if<std::uint64_t>(&member->second))
            return fitted<T>(*number);
        return std::nullopt;
    }

    /// The member `name`; nothing when it is missing or is neither `true` nor `false`.
    std::optional<bool> boolean(const std::string& name) const;

private:
    template <typename T, typename Number>
    static std::optional<T> fitted(Number number) {
        return std::in_range<T>(number) ? std::optional(static_cast<T>(number)) : std::nullopt;
    }

    std::map<std::string, JSONValue> members_; ///< those that hold an integer or a boolean
};

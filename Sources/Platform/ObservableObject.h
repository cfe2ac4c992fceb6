// Models that tell when they change. Main thread only.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

/// A model that tells its subscribers before anything of it changes.
class ObservableObject {
public:
    using Token = std::uint64_t;

    /// Has `willChange` called before each change, until `unsubscribe`.
    Token subscribe(std::function<void()> willChange) {
        subscribers_.emplace(++lastToken_, std::move(willChange));
        return lastToken_;
    }

    /// An unknown token is no failure.
    void unsubscribe(Token token) { subscribers_.erase(token); }

    /// Tells the subscribers, in the order of their subscription.
    void sendWillChange() const {
        for (const auto& [token, willChange] : subscribers_)
            willChange();
    }

    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

protected:
    ObservableObject() = default;
    ~ObservableObject() = default;

private:
    std::map<Token, std::function<void()>> subscribers_;
    Token lastToken_ = 0;
};

/// A property of a model. Every assignment tells the model's subscribers first, also one of an
/// equal value.
template <typename T>
class Published {
public:
    Published(ObservableObject& owner, T value) : owner_(owner), value_(std::move(value)) {}

    const T& get() const { return value_; }

    void set(T value) {
        owner_.sendWillChange();
        value_ = std::move(value);
    }

private:
    ObservableObject& owner_;
    T value_;
};

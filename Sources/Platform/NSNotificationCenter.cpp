#include "Platform/Foundation.h"

#include <thread>
#include <utility>

namespace {

/// Taken while the process has only one thread.
const std::thread::id mainThread = std::this_thread::get_id();

} // namespace

NSNotificationCenter& NSNotificationCenter::defaultCenter() {
    static auto& center = *new NSNotificationCenter;
    return center;
}

NSNotificationCenter::Token NSNotificationCenter::addObserverForName(std::string_view name,
                                                                     std::function<void()> block) {
    const Token token = ++lastToken_;
    observations_.emplace(token, std::make_shared<const Observation>(
                                     Observation{std::string(name), std::move(block)}));
    return token;
}

void NSNotificationCenter::removeObserver(Token token) {
    observations_.erase(token);
}

void NSNotificationCenter::post(std::string_view name) {
    if (std::this_thread::get_id() != mainThread) {
        DispatchQueue::mainAsync([this, name = std::string(name)] { post(name); });
        return;
    }
    const auto observations = observations_; // an observer may add and remove observers
    for (const auto& [token, observation] : observations)
        if (observation->name == name && observations_.contains(token))
            observation->block();
}

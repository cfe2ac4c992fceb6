#pragma once

#include "Linux/Updates/Library/Failure.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace tessary::updates {

/// Gives a file to the program that the desktop has registered for its kind, with the rights that
/// we have ourselves, and leaves it alone then. Destruction before that ends it without a word.
class PackageHandler {
public:
    /// `done` is called once, from the event loop, and may destroy this object: with nothing when
    /// the desktop was asked to start the handler, else with why not, as when none is registered.
    PackageHandler(const std::filesystem::path& package,
                   std::function<void(std::optional<Failure>)> done);
    ~PackageHandler();
    PackageHandler(const PackageHandler&) = delete;
    PackageHandler& operator=(const PackageHandler&) = delete;

private:
    class Asking;

    std::unique_ptr<Asking> asking_;
};

} // namespace tessary::updates

#pragma once

#include "Platform/Updates.h"

#include <memory>

namespace tsy {

/// Gives the program the update framework's controller. Main thread only.
class UpdateController {
public:
    /// The one instance, never destroyed. The first call makes it and so starts the updater.
    static UpdateController& shared();

    SPUStandardUpdaterController& controller() const { return *controller_; }

    UpdateController(const UpdateController&) = delete;
    UpdateController& operator=(const UpdateController&) = delete;

private:
    UpdateController();
    ~UpdateController() = default;

    const std::shared_ptr<SPUStandardUpdaterController> controller_;
};

} // namespace tsy

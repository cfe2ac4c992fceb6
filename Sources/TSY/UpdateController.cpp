#include "TSY/UpdateController.h"

namespace tsy {

UpdateController& UpdateController::shared() {
    static auto& controller = *new UpdateController;
    return controller;
}

UpdateController::UpdateController()
    : controller_(SPUStandardUpdaterController::initWithStartingUpdater(true)) {}

} // namespace tsy

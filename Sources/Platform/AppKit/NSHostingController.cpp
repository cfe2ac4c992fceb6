#include "Platform/AppKit/NSHostingController.h"

#include "Platform/Foundation.h"

#include <utility>

std::shared_ptr<NSHostingController>
NSHostingController::make(RootView rootView, std::shared_ptr<ObservableObject> model) {
    auto controller = std::shared_ptr<NSHostingController>(
        new NSHostingController(std::move(rootView), std::move(model)));
    controller->subscription_ = controller->model_->subscribe([weak = std::weak_ptr(controller)] {
        if (const auto self = weak.lock())
            self->modelWillChange();
    });
    return controller;
}

NSHostingController::NSHostingController(RootView rootView, std::shared_ptr<ObservableObject> model)
    : rootView_(std::move(rootView)), model_(std::move(model)) {}

NSHostingController::~NSHostingController() {
    model_->unsubscribe(subscription_);
}

const Forms::Form& NSHostingController::form() {
    rebuildIfNeeded();
    return form_;
}

void NSHostingController::setRenderer(std::function<void(const Forms::Form&)> render) {
    render_ = std::move(render);
    if (render_)
        render_(form());
}

void NSHostingController::rebuildIfNeeded() {
    if (!needsRebuild_)
        return;
    needsRebuild_ = false;
    form_ = rootView_();
    if (render_)
        render_(form_);
}

void NSHostingController::modelWillChange() {
    if (needsRebuild_)
        return;
    needsRebuild_ = true;
    DispatchQueue::mainAsync([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->rebuildIfNeeded();
    });
}

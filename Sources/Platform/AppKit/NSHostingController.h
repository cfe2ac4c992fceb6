#pragma once

#include "Platform/AppKit/Forms.h"
#include "Platform/ObservableObject.h"

#include <functional>
#include <memory>

/// Keeps a form up to date with its model. A change of the model only marks it; it is built again
/// once, later, from the main queue, or before it is read.
class NSHostingController : public std::enable_shared_from_this<NSHostingController> {
public:
    using RootView = std::function<Forms::Form()>;

    /// `rootView` builds the form from the model.
    static std::shared_ptr<NSHostingController> make(RootView rootView,
                                                     std::shared_ptr<ObservableObject> model);
    ~NSHostingController();

    /// The form as the model is now.
    const Forms::Form& form();

    /// Has `render` called now and whenever the form was built again. For the platform's window.
    void setRenderer(std::function<void(const Forms::Form& form)> render);

    /// Builds the form again if the model has changed.
    void rebuildIfNeeded();

    NSHostingController(const NSHostingController&) = delete;
    NSHostingController& operator=(const NSHostingController&) = delete;

private:
    NSHostingController(RootView rootView, std::shared_ptr<ObservableObject> model);

    void modelWillChange();

    RootView rootView_;
    std::shared_ptr<ObservableObject> model_;
    ObservableObject::Token subscription_ = 0;
    bool needsRebuild_ = true;
    Forms::Form form_;
    std::function<void(const Forms::Form&)> render_;
};

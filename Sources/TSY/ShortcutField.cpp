#include "TSY/ShortcutField.h"

#include "TSY/Settings.h"

#include <optional>

namespace tsy {

std::shared_ptr<ShortcutRecorderView> ShortcutField::makeNSView() const {
    auto view = ShortcutRecorderView::make({});
    view->setToolTip("Click, then type a shortcut. Escape cancels, Backspace clears.");
    view->setShortcut(Settings::shared().shortcut(slot));
    view->setValidator([field = *this](const Shortcut& shortcut) {
        return field.model->isAvailable(shortcut, field.slot);
    });
    view->setOnChange([field = *this](const std::optional<Shortcut>& shortcut) {
        Settings::shared().setShortcut(shortcut, field.slot);
        field.model->incrementRevision();
    });
    return view;
}

void ShortcutField::updateNSView(ShortcutRecorderView& view) const {
    if (view.isRecording())
        return;
    const auto shortcut = Settings::shared().shortcut(slot);
    if (view.shortcut() != shortcut)
        view.setShortcut(shortcut);
}

Forms::View ShortcutField::body() const {
    return {Forms::HostedView{
        .make = [field = *this] { return field.makeNSView(); },
        .update =
            [field = *this](const std::shared_ptr<NSView>& view) {
                field.updateNSView(*std::static_pointer_cast<ShortcutRecorderView>(view));
            },
    }};
}

} // namespace tsy

#include "Linux/Desktop/StatusItem/MenuView.h"

#include "Linux/Desktop/StatusItem/MenuText.h"
#include "Linux/Desktop/Symbols/SymbolIcon.h"
#include "Platform/Foundation.h"

#include <QGuiApplication>

#include <utility>

namespace tessary {

namespace {

/// Shown only: the key works through the hot-key service, whether the menu is open or not.
QString labelOf(const NSMenuItem& item) {
    QString label = menuLabel(item.title(), u'&');
    if (const auto tokens = keyEquivalentTokens(item))
        label += u'\t' + tokens->join(u'+');
    return label;
}

void fill(QMenu& widget, const NSMenu& menu);

void add(QMenu& widget, const std::shared_ptr<NSMenuItem>& item) {
    if (item->isSeparatorItem()) {
        widget.addSeparator();
        return;
    }
    if (item->submenu() != nullptr) {
        fill(*widget.addMenu(labelOf(*item)), *item->submenu());
        return;
    }
    QAction* action = widget.addAction(labelOf(*item));
    action->setEnabled(item->isEnabled());
    const bool isMarked = item->state() == NSControlStateValue::on;
    action->setCheckable(isMarked);
    action->setChecked(isMarked);
    if (item->image() != nullptr && !isMarked) // one hides the other
        action->setIcon(
            symbolIcon(item->image()->symbolName(), widget.palette().color(QPalette::WindowText)));
    if (item->action())
        QObject::connect(action, &QAction::triggered, action,
                         [item] { DispatchQueue::mainAsync([item] { item->action()(*item); }); });
}

void fill(QMenu& widget, const NSMenu& menu) {
    for (const auto& item : menu.itemArray())
        add(widget, item);
}

} // namespace

MenuView::MenuView(std::shared_ptr<NSMenu> menu) : menu_(std::move(menu)) {
    QObject::connect(&widget_, &QMenu::aboutToShow, &widget_, [this] { rebuild(); });
}

void MenuView::rebuild() {
    if (const auto delegate = menu_->delegate())
        delegate->menuWillOpen(*menu_);
    qDeleteAll(widget_.findChildren<QMenu*>(Qt::FindDirectChildrenOnly)); // clear() leaves them
    widget_.clear();
    fill(widget_, *menu_);
    // There a menu without a window in front is a window, which may be made as large as the screen.
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        widget_.setFixedSize(widget_.sizeHint());
}

} // namespace tessary

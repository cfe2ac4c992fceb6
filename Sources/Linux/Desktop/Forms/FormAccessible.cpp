#include "Linux/Desktop/Forms/FormAccessible.h"

#include "Linux/Desktop/Forms/SectionWidget.h"

#include <QAccessibleWidget>

namespace tessary {

namespace {

/// The toolkit takes whatever is of no class of its own for a mere container, which screen readers
/// pass over: nobody would hear a window's title.
QAccessibleInterface* formAccessible(const QString& className, QObject* object) {
    auto* widget = className == u"QWidget" ? qobject_cast<QWidget*>(object) : nullptr;
    if (dynamic_cast<SectionWidget*>(widget) != nullptr)
        return new QAccessibleWidget(widget, QAccessible::Grouping);
    if (widget != nullptr && widget->windowType() == Qt::Window)
        return new QAccessibleWidget(widget, QAccessible::Window);
    return nullptr;
}

} // namespace

void installFormAccessible() {
    QAccessible::installFactory(formAccessible);
}

} // namespace tessary

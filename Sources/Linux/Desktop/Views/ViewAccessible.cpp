#include "Linux/Desktop/Views/ViewAccessible.h"

#include "Linux/Desktop/Views/ViewWidget.h"

#include <QAccessibleWidget>

namespace tessary {

namespace {

class ViewAccessible : public QAccessibleWidget {
public:
    explicit ViewAccessible(ViewWidget& widget)
        : QAccessibleWidget(&widget, QAccessible::Button), widget_(widget) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Description ? widget_.texts() : QAccessibleWidget::text(kind);
    }

    QStringList actionNames() const override {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override {
        if (name == pressAction())
            widget_.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    ViewWidget& widget_; ///< deletes this object when it is deleted
};

QAccessibleInterface* viewAccessible(const QString& /*className*/, QObject* object) {
    auto* widget = dynamic_cast<ViewWidget*>(object);
    return widget != nullptr ? new ViewAccessible(*widget) : nullptr;
}

} // namespace

void installViewAccessible() {
    QAccessible::installFactory(viewAccessible);
}

} // namespace tessary

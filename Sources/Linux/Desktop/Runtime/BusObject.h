#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringView>
#include <QVariantMap>

#include <functional>
#include <vector>

namespace tessary {

/// An object of ours on a message bus, with one interface. It answers within the `CallBudget`.
/// QtDBus answers the standard calls, but for those of properties.
class BusObject : public QDBusVirtualObject {
public:
    struct Method {
        QStringView name;
        QStringView signature; ///< of the arguments; a call with others is answered by an error
        std::function<QDBusMessage(const QDBusMessage& call)> answer;
        QStringView interface = {}; ///< empty: the object's own
    };

    /// What Interfaces/ says of the interface.
    QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override;

protected:
    /// The views are kept.
    BusObject(QStringView interface, std::vector<Method> methods);

    /// All properties, which are only read.
    virtual QVariantMap properties() const { return {}; }

private:
    const Method* method(const QDBusMessage& call) const;
    QDBusMessage answerAboutProperties(const QDBusMessage& call) const;

    QStringView interface_;
    std::vector<Method> methods_;
};

} // namespace tessary

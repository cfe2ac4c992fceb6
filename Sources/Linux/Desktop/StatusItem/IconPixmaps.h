// Pictures as StatusNotifierItem sends them.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QMetaType>
#include <QString>

#include <string_view>

namespace tessary {

/// One size of a picture: signature (iiay).
struct IconPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels; ///< ARGB, eight bits each, the alpha byte first; row by row
};

using IconPixmaps = QList<IconPixmap>;

/// Signature (sa(iiay)ss).
struct ToolTip {
    QString iconName;
    IconPixmaps icon;
    QString title;
    QString description;
};

/// The symbol in all its sizes; empty for an unknown one.
IconPixmaps iconPixmaps(std::string_view symbol);

/// Makes the types known to QtDBus. To be called before they are sent.
void registerIconTypes();

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& toolTip);

} // namespace tessary

Q_DECLARE_METATYPE(tessary::IconPixmap)
Q_DECLARE_METATYPE(tessary::ToolTip)

// empty_tray: an icon with a menu of one entry, by Qt's own means, and nothing else.
#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QString>
#include <QSystemTrayIcon>

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    constexpr int size = 22;
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::white);
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"), &application, &QApplication::quit);
    QSystemTrayIcon icon{QIcon(pixmap)};
    icon.setContextMenu(&menu);
    icon.show();
    return QApplication::exec();
}

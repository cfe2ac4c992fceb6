#include "Platform/Foundation.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <utility>

void DispatchQueue::mainAsync(std::function<void()> task) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(task), Qt::QueuedConnection);
}

#include "Platform/Foundation.h"

#include "Linux/Desktop/Runtime/MainQueue.h"

#include <utility>

void DispatchQueue::mainAsync(std::function<void()> task) {
    tessary::MainQueue::shared().submit(std::move(task));
}

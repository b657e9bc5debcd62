#include "Qt/Foundation/TaskReceiverQt.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <utility>

namespace merovanta::qt {

namespace {

struct TaskEvent final : QEvent {
    explicit TaskEvent(std::function<void()> toDo) : QEvent(QEvent::User), task(std::move(toDo)) {}

    std::function<void()> task;
};

}  // namespace

void TaskReceiverQt::post(std::function<void()> task) {
    QCoreApplication::postEvent(this, new TaskEvent(std::move(task)));
}

bool TaskReceiverQt::event(QEvent* event) {
    if (event->type() != QEvent::User) return QObject::event(event);
    static_cast<TaskEvent*>(event)->task();
    return true;
}

}  // namespace merovanta::qt

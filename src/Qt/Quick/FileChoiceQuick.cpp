#include "Qt/Quick/FileChoiceQuick.h"

#include <QtCore/QTimer>
#include <QtCore/QVariant>
#include <QtGui/QWindow>
#include <chrono>

namespace merovanta::quick {

namespace {

constexpr const char* property = "merovantaFileChoices";
constexpr std::chrono::seconds afterglow{1};

void add(QWindow& window, int choices) {
    window.setProperty(property, window.property(property).toInt() + choices);
}

}  // namespace

void FileChoiceQuick::begin(QWindow& window) {
    add(window, 1);
}

void FileChoiceQuick::end(QWindow& window) {
    QTimer::singleShot(afterglow, &window, [&window] { add(window, -1); });
}

bool FileChoiceQuick::isOpen(const QWindow& window) {
    return window.property(property).toInt() > 0;
}

}  // namespace merovanta::quick

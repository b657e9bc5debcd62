#pragma once

#include <QtCore/QObject>

namespace merovanta::qt {

/// Whether the desktop's screen is locked, or dark because nobody used it, as far as a screen saver says so
/// on the session's D-Bus; never without a bus or a screen saver. Thread: main, while there is an
/// application.
class ScreenLockQt final : public QObject {
    Q_OBJECT

 public:
    ScreenLockQt();

    [[nodiscard]] bool isLocked() const { return mIsLocked; }

 Q_SIGNALS:
    void changed();

 private Q_SLOTS:
    void setLocked(bool isLocked);

 private:
    void watch(const QString& screenSaver);

    bool mIsLocked = false;
};

}  // namespace merovanta::qt

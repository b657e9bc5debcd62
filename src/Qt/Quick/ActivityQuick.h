#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <memory>
#include <optional>

#include "Qt/Foundation/ApplicationLifeQt.h"
#include "Qt/Foundation/ScreenLockQt.h"

namespace merovanta::quick {

/// Tells when the application gets and loses the user's attention; what that means depends on the kind of
/// machine. It may be made and observed before there is an application object. Thread: main.
class ActivityQuick final : public QObject, private qt::ApplicationLifeQt::Observer {
    Q_OBJECT

 public:
    enum class Machine {
        /// Phones and tablets: one application is in front, as the system tells.
        handheld,
        /// Many windows side by side: an application is there as long as one of its windows can be seen,
        /// whichever has the focus and whatever lies over it. None can while they are hidden or minimised,
        /// while the system has suspended the application, and while the screen is locked or dark.
        desktop,
        /// The screen is the application's own: it is always there.
        kiosk,
    };

    /// The kind of machine behind a platform plugin of this name.
    [[nodiscard]] static Machine machineOf(const QString& platformName);

    /// Of the machine that the application runs on.
    ActivityQuick();
    explicit ActivityQuick(Machine machine);
    ~ActivityQuick() override;

    /// False before there is an application object.
    [[nodiscard]] bool isActive() const { return mIsActive; }

    bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
    void willResignActive();
    void didBecomeActive();

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    void watchDesktop();
    void updateSoon();
    void update();
    [[nodiscard]] bool hasAttention() const;

    std::optional<Machine> mMachine;
    std::unique_ptr<qt::ScreenLockQt> mLock;
    bool mIsActive = false;
    bool mIsUpdating = false;
};

}  // namespace merovanta::quick

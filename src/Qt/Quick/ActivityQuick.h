#pragma once

#include <QtCore/QObject>

#include "Qt/Foundation/ApplicationLifeQt.h"

namespace merovanta::quick {

/// Tells when the application gets and loses the user's attention. It may be made and observed before there
/// is an application object.
class ActivityQuick final : public QObject, private qt::ApplicationLifeQt::Observer {
    Q_OBJECT

 public:
    ActivityQuick();
    ~ActivityQuick() override;

 Q_SIGNALS:
    void willResignActive();
    void didBecomeActive();

 private:
    void applicationStarted() override;
    void applicationEnding() override;

    void change(Qt::ApplicationState state);

    QMetaObject::Connection mConnection;
    bool mIsActive = false;
};

}  // namespace merovanta::quick

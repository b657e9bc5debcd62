#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <functional>

#include "Platform/Alert.h"

class QQuickWindow;

namespace merovanta::quick {

/// A modal dialog in the layer of the window's popups.
class AlertQuick final : public QObject, public Alert {
    Q_OBJECT

 public:
    explicit AlertQuick(std::function<void(bool accepted)> answered);
    ~AlertQuick() override;

    /// False if the dialog cannot be loaded.
    [[nodiscard]] bool present(QQuickWindow& window, const AlertTexts& texts);

    /// Whether this popup is one of the library's alerts.
    [[nodiscard]] static bool isAlert(const QObject& popup);

 private Q_SLOTS:
    void accept() { mIsAccepted = true; }
    /// Comes later than all that happens while the dialog closes.
    void answer();

 private:
    QPointer<QObject> mDialog;
    /// Null once called.
    std::function<void(bool accepted)> mAnswered;
    bool mIsAccepted = false;
};

}  // namespace merovanta::quick

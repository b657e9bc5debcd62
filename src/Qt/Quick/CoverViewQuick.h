#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "Platform/CoverView.h"

class QQuickItem;

namespace merovanta::quick {

/// The cover of CoverView.qml. It has the keyboard focus while it is there, except for popups over it.
class CoverViewQuick final : public QObject, public CoverView {
    Q_OBJECT

 public:
    explicit CoverViewQuick(std::function<void()> dismissed);
    ~CoverViewQuick() override;

    /// False if the interface file cannot be loaded. The parent must be in a window.
    [[nodiscard]] bool lay(QQuickItem& parent, const QString& className);

    [[nodiscard]] std::shared_ptr<View> view() const override;

 private Q_SLOTS:
    void dismissed();
    void holdFocus();

 private:
    std::function<void()> mDismissed;
    QPointer<QQuickItem> mItem;
    /// Where the keyboard focus was before.
    QPointer<QQuickItem> mFocus;
};

}  // namespace merovanta::quick

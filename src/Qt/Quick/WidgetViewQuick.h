#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "Platform/WidgetView.h"

class QQuickItem;
class QScreen;

namespace merovanta::quick {

/// The widget of DefaultUIView.qml. Its root item fills the parent and takes no touches itself.
class WidgetViewQuick final : public QObject, public WidgetView {
    Q_OBJECT

 public:
    explicit WidgetViewQuick(Actions actions);
    ~WidgetViewQuick() override;

    /// False if the interface file cannot be loaded. The parent must be in a window.
    [[nodiscard]] bool load(QQuickItem& parent);

    [[nodiscard]] std::shared_ptr<View> view() const override;
    void setText(const std::string& text) override;
    void setHidden(Element element, bool isHidden) override;

 private Q_SLOTS:
    void hideClicked();
    void closeClicked();
    void openChat();

 private:
    void follow(QQuickItem& parent);
    void followScreen(QScreen* screen);
    void layOut();

    Actions mActions;
    QPointer<QQuickItem> mItem;
    QMetaObject::Connection mOrientation;
};

}  // namespace merovanta::quick

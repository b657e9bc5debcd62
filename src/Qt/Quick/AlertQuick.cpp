#include "Qt/Quick/AlertQuick.h"

#include <QtCore/QMetaObject>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "Qt/Quick/InterfaceFileQuick.h"

namespace merovanta::quick {

namespace {

constexpr qsizetype maximumMessage = 4000;
constexpr qsizetype maximumTitle = 200;
constexpr qsizetype maximumLabel = 60;

}  // namespace

AlertQuick::AlertQuick(std::function<void(bool accepted)> answered) : mAnswered(std::move(answered)) {}

AlertQuick::~AlertQuick() {
    if (!mDialog) return;
    disconnect(mDialog, nullptr, this, nullptr);
    delete mDialog.data();
}

bool AlertQuick::present(QQuickWindow& window, const AlertTexts& texts) {
    mDialog = loadInterfaceFile(QStringLiteral("AlertDialog.qml"), window, window,
                                {
                                    {"parent", QVariant::fromValue(window.contentItem())},
                                    {"title", boundedText(texts.title, maximumTitle)},
                                    {"message", boundedText(texts.message, maximumMessage)},
                                    {"acceptText", boundedText(texts.accept, maximumLabel)},
                                    {"declineText", boundedText(texts.decline.value_or(""), maximumLabel)},
                                    {"canBeDeclined", texts.decline.has_value()},
                                });
    if (!mDialog) return false;
    connect(mDialog, SIGNAL(accepted()), this, SLOT(accept()));
    connect(mDialog, SIGNAL(closed()), this, SLOT(answer()), Qt::QueuedConnection);
    connect(mDialog, &QObject::destroyed, this, &AlertQuick::answer, Qt::QueuedConnection);
    connect(&window, &QWindow::visibleChanged, mDialog, [dialog = mDialog.data()](bool isVisible) {
        if (!isVisible) QMetaObject::invokeMethod(dialog, "close");
    });
    QMetaObject::invokeMethod(mDialog, "open");
    return true;
}

bool AlertQuick::isAlert(const QObject& popup) {
    return popup.property("isMerovantaAlert").toBool();
}

void AlertQuick::answer() {
    const auto answered = std::exchange(mAnswered, nullptr);
    // May destroy this object.
    if (answered) answered(mIsAccepted);
}

}  // namespace merovanta::quick

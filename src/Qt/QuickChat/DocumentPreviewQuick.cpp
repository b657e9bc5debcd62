#include "Qt/QuickChat/DocumentPreviewQuick.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStringListModel>
#include <QtCore/QUuid>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "Platform/Platform.h"
#include "Qt/Quick/InterfaceFileQuick.h"
#include "Qt/Quick/ViewQuick.h"
#include "Qt/QuickChat/DocumentImagesQuick.h"

namespace merovanta::quick {

namespace {

constexpr qsizetype maximumTitle = 200;

}  // namespace

DocumentPreviewQuick::DocumentPreviewQuick(DocumentPreviewFactoryQuick::Opener opener,
                                           std::shared_ptr<WorkQueue> queue)
    : mOpener(std::move(opener)), mQueue(std::move(queue)) {}

DocumentPreviewQuick::~DocumentPreviewQuick() {
    close();
}

void DocumentPreviewQuick::present(const ViewController& over, const std::string& path) {
    close();
    const auto view = over.view();
    const QQuickItem* const item = view ? ViewQuick::itemInWindow(*view) : nullptr;
    mWindow = item == nullptr ? nullptr : item->window();
    if (!mWindow) return;
    mPath = QString::fromStdString(path);
    mReader = std::make_shared<DocumentReaderQuick>(mPath);
    inBackground([reader = mReader] { return reader->type(); }, &DocumentPreviewQuick::handle);
}

template <typename Work, typename Take>
void DocumentPreviewQuick::inBackground(Work work, Take take) {
    mQueue->async([self = QPointer(this), reader = mReader, work, take] {
        platform::current().mainQueue().async([self, reader, take, result = work()] {
            if (self && self->mReader == reader) (self->*take)(result);
        });
    });
}

void DocumentPreviewQuick::handle(qt::DocumentType type) {
    open();
    if (!mDialog) return close();
    mDialog->setProperty("canBeOpened", type == qt::DocumentType::external);
    inBackground([reader = mReader, type] { return reader->read(type); }, &DocumentPreviewQuick::show);
}

void DocumentPreviewQuick::open() {
    if (!mWindow) return;
    const QString title = boundedText(QFileInfo(mPath).fileName().toStdString(), maximumTitle);
    mDialog = loadInterfaceFile(QStringLiteral("DocumentPreview.qml"), *mWindow, *mWindow,
                                {
                                    {"parent", QVariant::fromValue(mWindow->contentItem())},
                                    {"title", title},
                                });
    if (!mDialog) return;
    mEngine = qmlEngine(mDialog);
    mImages = QStringLiteral("merovanta-") + QUuid::createUuid().toString(QUuid::Id128);
    mEngine->addImageProvider(mImages, new DocumentImagesQuick(mReader, mQueue));
    connect(mDialog, SIGNAL(closed()), this, SLOT(closed()));
    connect(mDialog, SIGNAL(openWanted()), this, SLOT(openWanted()));
    connect(mWindow, &QWindow::visibleChanged, mDialog, [dialog = mDialog.data()](bool isVisible) {
        if (!isVisible) QMetaObject::invokeMethod(dialog, "close");
    });
    QMetaObject::invokeMethod(mDialog, "open");
}

void DocumentPreviewQuick::show(const DocumentReaderQuick::Content& content) {
    if (!mDialog) return;
    mDialog->setProperty("imageSource", QString(QStringLiteral("image://") + mImages + u'/'));
    mDialog->setProperty("pages", content.pages);
    mDialog->setProperty("pictureWidth", content.width);
    if (!content.lines.isEmpty()) {
        auto lines = std::make_unique<QStringListModel>(content.lines);
        lines->setParent(mDialog);
        mDialog->setProperty("lines", QVariant::fromValue<QObject*>(lines.release()));
    }
    mDialog->setProperty("isCut", content.isCut);
    mDialog->setProperty("isLoaded", true);
}

void DocumentPreviewQuick::openWanted() {
    afterSignal(&DocumentPreviewQuick::openElsewhere);
}

void DocumentPreviewQuick::closed() {
    afterSignal(&DocumentPreviewQuick::close);
}

// Not within the dialog's own signal, and not another document's by then.
void DocumentPreviewQuick::afterSignal(void (DocumentPreviewQuick::*action)()) {
    platform::current().mainQueue().async([self = QPointer(this), reader = mReader, action] {
        if (self && self->mReader == reader) (self->*action)();
    });
}

void DocumentPreviewQuick::openElsewhere() {
    if (mOpener(QUrl::fromLocalFile(mPath))) return close();
    if (mDialog) mDialog->setProperty("canBeOpened", false);
}

void DocumentPreviewQuick::close() {
    if (mReader) mReader->cancel();
    mReader = nullptr;
    if (mDialog) {
        disconnect(mDialog, nullptr, this, nullptr);
        delete mDialog.data();
    }
    if (mEngine && !mImages.isEmpty()) mEngine->removeImageProvider(mImages);
    mImages.clear();
}

}  // namespace merovanta::quick

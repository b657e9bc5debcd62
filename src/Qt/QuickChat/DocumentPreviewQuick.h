#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <memory>

#include "Platform/DocumentPreview.h"
#include "Platform/WorkQueue.h"
#include "Qt/QuickChat/DocumentPreviewFactoryQuick.h"
#include "Qt/QuickChat/DocumentReaderQuick.h"

class QQmlEngine;
class QQuickWindow;

namespace merovanta::quick {

/// The dialog of DocumentPreview.qml in the layer of the window's popups. Files are read on the queue.
class DocumentPreviewQuick final : public QObject, public DocumentPreview {
    Q_OBJECT

 public:
    DocumentPreviewQuick(DocumentPreviewFactoryQuick::Opener opener, std::shared_ptr<WorkQueue> queue);
    ~DocumentPreviewQuick() override;

    void present(const ViewController& over, const std::string& path) override;

 private Q_SLOTS:
    void closed();
    void openWanted();

 private:
    using Reader = std::shared_ptr<DocumentReaderQuick>;

    /// Does the work on the queue, then takes the result, unless another document was presented meanwhile.
    template <typename Work, typename Take>
    void inBackground(Work work, Take take);
    void handle(qt::DocumentType type);
    void afterSignal(void (DocumentPreviewQuick::*action)());
    void open();
    void openElsewhere();
    void close();
    void show(const DocumentReaderQuick::Content& content);

    const DocumentPreviewFactoryQuick::Opener mOpener;
    const std::shared_ptr<WorkQueue> mQueue;
    QString mPath;
    /// Null if nothing is presented.
    Reader mReader;
    QPointer<QQuickWindow> mWindow;
    QPointer<QObject> mDialog;
    QPointer<QQmlEngine> mEngine;
    QString mImages;
};

}  // namespace merovanta::quick

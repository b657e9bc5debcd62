#pragma once

#include <QtQuick/QQuickImageProvider>
#include <memory>

#include "Platform/WorkQueue.h"
#include "Qt/QuickChat/DocumentReaderQuick.h"

namespace merovanta::quick {

/// The pages of a document as images, whose names are the numbers of the pages from zero. They are drawn on
/// the queue.
class DocumentImagesQuick final : public QQuickAsyncImageProvider {
 public:
    DocumentImagesQuick(std::shared_ptr<DocumentReaderQuick> reader, std::shared_ptr<WorkQueue> queue);

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override;

 private:
    const std::shared_ptr<DocumentReaderQuick> mReader;
    const std::shared_ptr<WorkQueue> mQueue;
};

}  // namespace merovanta::quick

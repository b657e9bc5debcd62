#include "Qt/QuickChat/DocumentImagesQuick.h"

#include <QtQuick/QQuickTextureFactory>
#include <atomic>
#include <utility>

namespace merovanta::quick {

namespace {

/// The way of an image from the queue to the response, which may be gone by then.
class DrawnPage final : public QObject {
    Q_OBJECT

 Q_SIGNALS:
    void drawn(const QImage& image);
};

class Response final : public QQuickImageResponse {
    Q_OBJECT

 public:
    Response(std::shared_ptr<DocumentReaderQuick> reader, WorkQueue& queue, int page, int width) {
        const auto drawnPage = std::make_shared<DrawnPage>();
        connect(drawnPage.get(), &DrawnPage::drawn, this, &Response::finish, Qt::QueuedConnection);
        queue.async([=, isCancelled = mIsCancelled, source = std::move(reader)] {
            emit drawnPage->drawn(*isCancelled ? QImage() : source->image(page, width));
        });
    }

    [[nodiscard]] QQuickTextureFactory* textureFactory() const override {
        return QQuickTextureFactory::textureFactoryForImage(mImage);
    }
    [[nodiscard]] QString errorString() const override {
        return mImage.isNull() ? QStringLiteral("The page cannot be drawn") : QString();
    }
    void cancel() override { *mIsCancelled = true; }

 private:
    void finish(const QImage& image) {
        mImage = image;
        emit finished();
    }

    const std::shared_ptr<std::atomic<bool>> mIsCancelled = std::make_shared<std::atomic<bool>>(false);
    QImage mImage;
};

}  // namespace

DocumentImagesQuick::DocumentImagesQuick(std::shared_ptr<DocumentReaderQuick> reader,
                                         std::shared_ptr<WorkQueue> queue)
    : mReader(std::move(reader)), mQueue(std::move(queue)) {}

QQuickImageResponse* DocumentImagesQuick::requestImageResponse(const QString& id,
                                                               const QSize& requestedSize) {
    return new Response(mReader, *mQueue, id.toInt(), requestedSize.width());
}

}  // namespace merovanta::quick

#include "DocumentImagesQuick.moc"

#include "Qt/Quick/ImageOverlayFactoryQuick.h"

#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGTexture>
#include <utility>

#include "Qt/Quick/PaintOrderQuick.h"
#include "Qt/Quick/ViewQuick.h"

namespace {

/// An image in the memory of the buffer, which it keeps.
QImage imageOf(merovanta::PixelBuffer pixels) {
    if (pixels.isEmpty()) return {};
    const auto* const owner = new merovanta::PixelBuffer(std::move(pixels));
    const auto width = static_cast<int>(owner->width());
    const auto height = static_cast<int>(owner->height());
    const auto forget = [](void* buffer) { delete static_cast<merovanta::PixelBuffer*>(buffer); };
    return {reinterpret_cast<const uchar*>(owner->row(0)),
            width,
            height,
            qsizetype{4} * width,
            QImage::Format_ARGB32_Premultiplied,
            forget,
            const_cast<merovanta::PixelBuffer*>(owner)};
}

/// Outside the library's namespace, for it is known in the view tree by its plain name.
class PassthroughUIImageView final : public QQuickItem {
    Q_OBJECT

 public:
    PassthroughUIImageView(QQuickItem& parent, QImage image) : QQuickItem(&parent), mImage(std::move(image)) {
        setFlag(ItemHasContents);
        setZ(merovanta::quick::zOfDrawings);
        const auto fill = [this, &parent] { setSize(parent.size()); };
        connect(&parent, &QQuickItem::widthChanged, this, fill);
        connect(&parent, &QQuickItem::heightChanged, this, fill);
        fill();
    }

 protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* /*data*/) override {
        auto* node = static_cast<QSGImageNode*>(old);
        if (node == nullptr) {
            if (mImage.isNull()) return nullptr;
            QSGTexture* const texture = window()->createTextureFromImage(mImage);
            if (texture == nullptr) return nullptr;
            node = window()->createImageNode();
            node->setTexture(texture);
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Linear);
        }
        node->setRect(boundingRect());
        return node;
    }

 private:
    const QImage mImage;
};

}  // namespace

namespace merovanta::quick {

namespace {

class ImageOverlayQuick final : public ImageOverlay {
 public:
    explicit ImageOverlayQuick(QQuickItem& item) : mItem(&item) {}
    ImageOverlayQuick(const ImageOverlayQuick&) = delete;
    ImageOverlayQuick& operator=(const ImageOverlayQuick&) = delete;
    ~ImageOverlayQuick() override { delete mItem.data(); }

 private:
    QPointer<QQuickItem> mItem;
};

}  // namespace

std::unique_ptr<ImageOverlay> ImageOverlayFactoryQuick::show(const View& over, PixelBuffer pixels,
                                                             double opacity) {
    QQuickItem* const parent = ViewQuick::itemOf(over);
    if (parent == nullptr) return nullptr;
    auto* const item = new PassthroughUIImageView(*parent, imageOf(std::move(pixels)));
    item->setOpacity(opacity);
    return std::make_unique<ImageOverlayQuick>(*item);
}

}  // namespace merovanta::quick

#include "ImageOverlayFactoryQuick.moc"

#include "Qt/Quick/WindowPreviewQuick.h"

#include <QtGui/QBackingStore>
#include <QtGui/QImage>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtGui/QPainter>
#include <QtOpenGL/QOpenGLTexture>
#include <QtOpenGL/QOpenGLTextureBlitter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <utility>
// The public interface does not say what the software renderer paints on.
#include <private/qquickwindow_p.h>
#include <private/qsgsoftwarerenderer_p.h>

#include "Qt/Quick/MaskWalkQuick.h"
#include "Qt/Quick/SceneGraphQuick.h"
#include "Qt/Quick/WindowCaptureQuick.h"

namespace merovanta::quick {

namespace {

QBackingStore* backingStoreOf(QSGSoftwareRenderer& renderer);

/// The renderer names what it paints windows on to nobody; only an explicit instantiation may.
template <auto Member>
struct BackingStoreOf {
    friend QBackingStore* backingStoreOf(QSGSoftwareRenderer& renderer) { return renderer.*Member; }
};
template struct BackingStoreOf<&QSGSoftwareRenderer::m_backingStore>;

QColor colorOf(const MaskReason& reason) {
    switch (reason.kind) {
        case MaskReason::Kind::tag:
        case MaskReason::Kind::className:
            return {0xd9, 0x48, 0x0f};
        case MaskReason::Kind::mark:
            return {0x19, 0x71, 0xc2};
        case MaskReason::Kind::policy:
            return {0x2b, 0x8a, 0x3e};
        case MaskReason::Kind::hiddenInput:
            return {0x86, 0x2e, 0x9c};
    }
    return {};
}

/// In pixels.
QRectF placeOf(const MaskArea& area, double scale) {
    const Rect& rect = area.rect;
    const double factor = area.kind == MaskArea::Kind::fixed ? scale : 1;
    return {rect.x, rect.y, rect.width * factor, rect.height * factor};
}

void outline(QPainter& painter, const MaskArea& area, const QString& name, double scale) {
    const QColor color = colorOf(area.reason);
    const QRectF place = placeOf(area, scale).intersected(painter.viewport());
    if (place.isEmpty()) return;
    const bool isFixed = area.kind == MaskArea::Kind::fixed;
    painter.setPen(QPen(color, 2 * scale, isFixed ? Qt::DashLine : Qt::SolidLine));
    painter.drawRect(place.adjusted(scale, scale, -scale, -scale));
    QRectF label(place.topLeft(), painter.fontMetrics().size(Qt::TextSingleLine, name));
    label.setWidth(label.width() + 6 * scale);
    painter.fillRect(label, color);
    painter.setPen(Qt::white);
    painter.drawText(label, Qt::AlignCenter, name);
}

}  // namespace

/// What passes between the main thread and the one that renders; only the one that has the turn touches it.
class WindowPreviewQuick::Outlines {
 public:
    /// Before the frame, on the main thread.
    void prepare(const MaskPreviewSource& source) { mPreview = source(); }

    /// On the thread that renders, while the main thread stands still.
    void find(QQuickWindow& window) {
        if (!mPreview.judge) return;
        MaskWalkQuick walk(window, *mPreview.judge);
        walk.run();
        draw(walk.takeAreas(), window);
        // The software renderer would leave the outlines of frames before.
        paintWhole(window);
    }

    /// Over the frame, on the thread that renders.
    void paint(QQuickWindow& window) {
        switch (window.rendererInterface()->graphicsApi()) {
            case QSGRendererInterface::OpenGL:
                return paintOpenGL(window);
            case QSGRendererInterface::Software:
                return paintSoftware(window);
            default:
                return;
        }
    }

    /// Before the scene graph's context goes.
    void release() {
        mTexture.reset();
        mBlitter.reset();
    }

 private:
    void draw(std::vector<MaskArea> areas, const QQuickWindow& window) {
        const double scale = window.effectiveDevicePixelRatio();
        const QSize size = (QSizeF(window.size()) * scale).toSize();
        if (areas == mAreas && size == mImage.size()) return;
        mAreas = std::move(areas);
        mTexture.reset();
        mImage = QImage(size, QImage::Format_RGBA8888_Premultiplied);
        mImage.fill(Qt::transparent);
        QPainter painter(&mImage);
        QFont font = painter.font();
        font.setPixelSize(static_cast<int>(10 * scale));
        painter.setFont(font);
        for (const MaskArea& area : mAreas) {
            if (area.kind == MaskArea::Kind::exempt) continue;
            outline(painter, area, QString::fromStdString(mPreview.nameOf(area.reason)), scale);
        }
    }

    void paintOpenGL(QQuickWindow& window) {
        QOpenGLContext* const context = QOpenGLContext::currentContext();
        if (context == nullptr || mImage.isNull()) return;
        window.beginExternalCommands();
        QOpenGLFunctions& gl = *context->functions();
        gl.glBindFramebuffer(GL_FRAMEBUFFER, context->defaultFramebufferObject());
        gl.glViewport(0, 0, mImage.width(), mImage.height());
        gl.glDisable(GL_DEPTH_TEST);
        gl.glDisable(GL_SCISSOR_TEST);
        gl.glEnable(GL_BLEND);
        gl.glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
        if (!mBlitter) {
            mBlitter = std::make_unique<QOpenGLTextureBlitter>();
            mBlitter->create();
        }
        if (!mTexture)
            mTexture = std::make_unique<QOpenGLTexture>(mImage, QOpenGLTexture::DontGenerateMipMaps);
        mBlitter->bind();
        mBlitter->blit(mTexture->textureId(), QMatrix4x4(), QOpenGLTextureBlitter::OriginTopLeft);
        mBlitter->release();
        window.endExternalCommands();
    }

    void paintSoftware(QQuickWindow& window) {
        // Here, unlike with OpenGL, the picture is taken of what is painted when all is done.
        if (WindowCaptureQuick::isGrabbing()) return;
        auto* const renderer =
            dynamic_cast<QSGSoftwareRenderer*>(QQuickWindowPrivate::get(&window)->renderer);
        QBackingStore* const store = renderer == nullptr ? nullptr : backingStoreOf(*renderer);
        if (store == nullptr) return;
        QPainter painter(store->paintDevice());
        painter.drawImage(QRectF(QPointF(), QSizeF(window.size())), mImage);
    }

    MaskPreview mPreview;
    std::vector<MaskArea> mAreas;
    QImage mImage;
    std::unique_ptr<QOpenGLTextureBlitter> mBlitter;
    std::unique_ptr<QOpenGLTexture> mTexture;
};

WindowPreviewQuick::WindowPreviewQuick(QQuickWindow& window, MaskPreviewSource source) : mWindow(&window) {
    const auto outlines = std::make_shared<Outlines>();
    // These come on the thread that renders, so their context is the window, whose end stops the rendering
    // first.
    const auto connectDirectly = [&](auto signal, auto slot) {
        return QObject::connect(&window, signal, &window, std::move(slot), Qt::DirectConnection);
    };
    mConnections = {
        connectDirectly(&QQuickWindow::afterAnimating,
                        [outlines, source = std::move(source)] { outlines->prepare(source); }),
        connectDirectly(&QQuickWindow::afterSynchronizing, [outlines, &window] { outlines->find(window); }),
        connectDirectly(&QQuickWindow::afterRendering, [outlines, &window] { outlines->paint(window); })};
    // Stays when the preview ends: only then may the textures go.
    connectDirectly(&QQuickWindow::sceneGraphInvalidated, [outlines] { outlines->release(); });
    refresh();
}

WindowPreviewQuick::~WindowPreviewQuick() {
    for (const auto& connection : mConnections)
        QObject::disconnect(connection);
    if (!mWindow) return;
    // The software renderer would leave the last outlines.
    QQuickWindow& window = *mWindow;
    QObject::connect(
        &window, &QQuickWindow::afterSynchronizing, &window, [&window] { paintWhole(window); },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    refresh();
}

void WindowPreviewQuick::refresh() {
    if (mWindow) mWindow->update();
}

}  // namespace merovanta::quick

#include "Qt/Quick/OpenGLReadbackQuick.h"

#include <QtCore/QSize>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <algorithm>
#include <array>

#include "Qt/Quick/FrameRequestQuick.h"

// Missing in the headers of OpenGL ES, whose implementations may have it as an extension.
#ifndef GL_BGRA
#define GL_BGRA 0x80E1
#endif

namespace merovanta::quick {

namespace {

constexpr std::uint32_t opaque = 0xff000000U;

std::uint32_t fromBgra(std::uint32_t word) {
    return word | opaque;
}

std::uint32_t fromRgba(std::uint32_t word) {
    return (word & 0x0000ff00U) | ((word & 0xffU) << 16U) | ((word >> 16U) & 0xffU) | opaque;
}

/// OpenGL's rows run from the bottom to the top.
template <typename Convert>
void flip(PixelBuffer& pixels, Convert convert) {
    const std::size_t width = pixels.width();
    std::size_t top = 0;
    std::size_t bottom = pixels.height();
    while (top < bottom) {
        std::uint32_t* const upper = pixels.row(top++);
        std::uint32_t* const lower = pixels.row(--bottom);
        for (std::size_t x = 0; x < width; ++x) {
            const std::uint32_t kept = upper[x];
            upper[x] = convert(lower[x]);
            lower[x] = convert(kept);
        }
    }
}

void forgetErrors(QOpenGLFunctions& gl) {
    // Bounded: a lost context never stops to report.
    constexpr int most = 16;
    for (int count = 0; count < most && gl.glGetError() != GL_NO_ERROR; ++count) {
    }
}

}  // namespace

bool readOpenGLFrame(FrameRequestQuick& request) {
    QOpenGLContext* const context = QOpenGLContext::currentContext();
    if (context == nullptr) return false;
    QOpenGLFunctions& gl = *context->functions();
    std::array<GLint, 4> viewport{};
    gl.glGetIntegerv(GL_VIEWPORT, viewport.data());
    if (!request.fits({viewport[2], viewport[3]})) return false;

    PixelBuffer& pixels = request.pixels();
    pixels.resize(static_cast<std::size_t>(viewport[2]), static_cast<std::size_t>(viewport[3]));
    const bool isBgra = !context->isOpenGLES() || context->hasExtension("GL_EXT_read_format_bgra");
    forgetErrors(gl);
    gl.glPixelStorei(GL_PACK_ALIGNMENT, 4);
    gl.glReadPixels(viewport[0], viewport[1], viewport[2], viewport[3], isBgra ? GL_BGRA : GL_RGBA,
                    GL_UNSIGNED_BYTE, pixels.row(0));
    if (gl.glGetError() != GL_NO_ERROR) return false;
    if (isBgra) {
        flip(pixels, fromBgra);
    } else {
        flip(pixels, fromRgba);
    }
    return true;
}

}  // namespace merovanta::quick

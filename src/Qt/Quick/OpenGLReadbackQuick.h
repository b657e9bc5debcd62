#pragma once

namespace merovanta::quick {

class FrameRequestQuick;

/// Reads what was painted so far in the current render pass out of the OpenGL context that is current. False
/// if it cannot, or if the picture has another size than the request's geometry.
[[nodiscard]] bool readOpenGLFrame(FrameRequestQuick& request);

}  // namespace merovanta::quick

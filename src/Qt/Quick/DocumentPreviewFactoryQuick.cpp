#include "Qt/Quick/DocumentPreviewFactoryQuick.h"

#include <QtGui/QDesktopServices>
#include <utility>

namespace merovanta::quick {

DocumentPreviewFactoryQuick::DocumentPreviewFactoryQuick()
    : DocumentPreviewFactoryQuick(&QDesktopServices::openUrl) {}

DocumentPreviewFactoryQuick::DocumentPreviewFactoryQuick(Opener opener) : mOpener(std::move(opener)) {}

std::unique_ptr<DocumentPreview> DocumentPreviewFactoryQuick::create() {
    return nullptr;
}

}  // namespace merovanta::quick

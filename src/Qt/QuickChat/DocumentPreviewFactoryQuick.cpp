#include "Qt/QuickChat/DocumentPreviewFactoryQuick.h"

#include <QtGui/QDesktopServices>
#include <utility>

#include "Qt/Foundation/WorkQueueQt.h"
#include "Qt/QuickChat/DocumentPreviewQuick.h"

namespace merovanta::quick {

DocumentPreviewFactoryQuick::DocumentPreviewFactoryQuick()
    : DocumentPreviewFactoryQuick(&QDesktopServices::openUrl) {}

DocumentPreviewFactoryQuick::DocumentPreviewFactoryQuick(Opener opener)
    : mOpener(std::move(opener)), mQueue(std::make_shared<qt::WorkQueueQt>()) {}

std::unique_ptr<DocumentPreview> DocumentPreviewFactoryQuick::create() {
    return std::make_unique<DocumentPreviewQuick>(mOpener, mQueue);
}

}  // namespace merovanta::quick

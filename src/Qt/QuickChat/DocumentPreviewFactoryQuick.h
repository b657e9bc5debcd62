#pragma once

#include <QtCore/QUrl>
#include <functional>

#include "Platform/DocumentPreview.h"
#include "Platform/WorkQueue.h"

namespace merovanta::quick {

class DocumentPreviewFactoryQuick final : public DocumentPreviewFactory {
 public:
    /// Has the system open a file; false if it cannot.
    using Opener = std::function<bool(const QUrl& file)>;

    /// With the system's own opener.
    DocumentPreviewFactoryQuick();
    explicit DocumentPreviewFactoryQuick(Opener opener);

    [[nodiscard]] std::unique_ptr<DocumentPreview> create() override;

 private:
    Opener mOpener;
    /// Of their own: a document can take long.
    std::shared_ptr<WorkQueue> mQueue;
};

}  // namespace merovanta::quick

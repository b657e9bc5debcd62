#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtGui/QImage>
#include <atomic>
#include <memory>

#include "Qt/Foundation/DocumentTypeQt.h"
#include "Qt/QuickChat/PdfQuick.h"

namespace merovanta::quick {

/// Reads a file that came from outside, within bounds. Thread: any one at a time, and none that must not
/// wait.
class DocumentReaderQuick {
 public:
    struct Content {
        /// The height of each page, or of the picture, for a width of one.
        QVariantList pages;
        /// Of the picture in pixels.
        int width = 0;
        QStringList lines;
        /// Whether there is more than is shown.
        bool isCut = false;
    };

    explicit DocumentReaderQuick(QString path);
    DocumentReaderQuick(const DocumentReaderQuick&) = delete;
    DocumentReaderQuick& operator=(const DocumentReaderQuick&) = delete;
    ~DocumentReaderQuick() = default;

    /// Ends what is under way and what will be asked: it gives nothing. Any thread.
    void cancel() { mIsCancelled = true; }

    [[nodiscard]] qt::DocumentType type() const { return qt::documentTypeOf(mPath); }

    /// Empty if the file is broken, or not of this type.
    [[nodiscard]] Content read(qt::DocumentType type);

    /// The page, or the picture, at about this width in pixels; null if it cannot be drawn. After read().
    [[nodiscard]] QImage image(int page, int width) const;

 private:
    [[nodiscard]] Content readPdf();
    [[nodiscard]] Content readPicture() const;
    [[nodiscard]] Content readText() const;
    [[nodiscard]] QImage pageImage(int page, int width) const;
    [[nodiscard]] QImage pictureImage(int width) const;

    const QString mPath;
    std::atomic<bool> mIsCancelled = false;
    std::unique_ptr<PdfQuick> mPdf;
};

}  // namespace merovanta::quick

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QSizeF>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <atomic>

namespace merovanta::quick {

/// A PDF, read and drawn by Poppler's programs: in processes of their own, for a document can be made to
/// exhaust or crash what draws it. Thread: any one at a time that may wait.
class PdfQuick {
 public:
    static constexpr int maximumPages = 500;

    /// Once cancelled it ends the program under way and gives nothing more.
    PdfQuick(QString path, const std::atomic<bool>& isCancelled);

    /// False if the document is broken, locked, or exceeds the limits.
    [[nodiscard]] bool load();
    /// Of what is shown, at most maximumPages.
    [[nodiscard]] int pageCount() const { return static_cast<int>(mPages.size()); }
    /// Whether there are more pages.
    [[nodiscard]] bool isCut() const { return mIsCut; }
    /// As shown, in points.
    [[nodiscard]] QSizeF pageSize(int page) const;
    /// The page in exactly this size; null if it cannot be drawn.
    [[nodiscard]] QImage image(int page, QSize size) const;

 private:
    struct Page {
        QSizeF size;
        /// Whether it is shown turned by 90 or 270 degrees.
        bool isTurned = false;
    };

    void takeLine(const QByteArray& line);

    const QString mPath;
    const std::atomic<bool>& mIsCancelled;
    QList<Page> mPages;
    bool mIsCut = false;
};

}  // namespace merovanta::quick

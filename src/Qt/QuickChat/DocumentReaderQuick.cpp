#include "Qt/QuickChat/DocumentReaderQuick.h"

#include <QtCore/QFile>
#include <QtCore/QMimeDatabase>
#include <QtCore/QMimeType>
#include <QtCore/QStringDecoder>
#include <QtGui/QImageReader>
#include <algorithm>
#include <cmath>
#include <utility>

#include "Qt/Foundation/GuardedFileQt.h"

namespace merovanta::quick {

namespace {

constexpr qint64 maximumPicture = 40'000'000;
/// In pixels, of what is drawn.
constexpr double maximumImage = 8'000'000;
constexpr qint64 maximumText = 1 << 20;
constexpr qsizetype maximumLines = 20'000;
/// Longer ones are broken, for a line is laid out as a whole.
constexpr qsizetype maximumLine = 500;

double shownRatio(const QSizeF& shape) {
    return std::clamp(shape.height() / shape.width(), 0.02, 50.0);
}

/// The size of this width and shape, made smaller if it is too large.
QSize boundedSize(int width, const QSizeF& shape) {
    const double ratio = shownRatio(shape);
    const double bounded = std::min<double>(width, std::sqrt(maximumImage / ratio));
    return QSizeF(bounded, bounded * ratio).toSize().expandedTo({1, 1});
}

/// By what is in the file, for names are often wrong. Empty for what is no picture made of pixels.
QByteArray pictureFormat(const QString& path) {
    const QString type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchContent).name();
    for (const char* format : {"png", "jpeg", "gif", "bmp", "webp", "tiff"}) {
        if (type == QLatin1String("image/") + QLatin1String(format)) return format;
    }
    return {};
}

/// Null if the file is no picture, or too large a one.
QSize pictureSize(const QImageReader& reader) {
    const QSize size = reader.format().isEmpty() ? QSize() : reader.size();
    const bool isBounded = qint64{size.width()} * size.height() <= maximumPicture;
    return !size.isEmpty() && isBounded ? size : QSize();
}

bool isTurned(const QImageReader& reader) {
    return reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
}

QString decoded(const QByteArray& bytes) {
    QStringDecoder decoder(QStringConverter::encodingForData(bytes).value_or(QStringConverter::Utf8));
    QString text = decoder(bytes);
    if (decoder.hasError()) text = QString::fromLatin1(bytes);
    return text.replace(QChar::Null, QChar::ReplacementCharacter);
}

/// The line in pieces that split no character.
void appendBroken(QStringView line, QStringList& lines) {
    if (line.endsWith(u'\r')) line.chop(1);
    do {
        qsizetype length = std::min(maximumLine, line.size());
        if (length < line.size() && line[length - 1].isHighSurrogate()) --length;
        lines.append(line.first(length).toString());
        line = line.sliced(length);
    } while (!line.isEmpty() && lines.size() < maximumLines);
}

}  // namespace

DocumentReaderQuick::DocumentReaderQuick(QString path) : mPath(std::move(path)) {}

DocumentReaderQuick::Content DocumentReaderQuick::read(qt::DocumentType type) {
    switch (type) {
        case qt::DocumentType::pdf:
            return readPdf();
        case qt::DocumentType::picture:
            return readPicture();
        case qt::DocumentType::text:
            return readText();
        default:
            return {};
    }
}

QImage DocumentReaderQuick::image(int page, int width) const {
    if (width <= 0 || mIsCancelled) return {};
    return mPdf ? pageImage(page, width) : pictureImage(width);
}

DocumentReaderQuick::Content DocumentReaderQuick::readPdf() {
    auto pdf = std::make_unique<PdfQuick>(mPath, mIsCancelled);
    if (!pdf->load()) return {};
    mPdf = std::move(pdf);
    Content content{.isCut = mPdf->isCut()};
    for (int page = 0; page < mPdf->pageCount(); ++page) {
        const QSizeF size = mPdf->pageSize(page);
        content.pages.append(size.isEmpty() ? std::sqrt(2.0) : shownRatio(size));
    }
    return content;
}

DocumentReaderQuick::Content DocumentReaderQuick::readPicture() const {
    qt::GuardedFileQt file(mPath, mIsCancelled);
    const QImageReader reader(&file, pictureFormat(mPath));
    const QSize size = pictureSize(reader);
    if (size.isEmpty()) return {};
    const QSize shown = isTurned(reader) ? size.transposed() : size;
    return {.pages = {shownRatio(shown)}, .width = shown.width()};
}

DocumentReaderQuick::Content DocumentReaderQuick::readText() const {
    QFile file(mPath);
    if (!file.open(QFile::ReadOnly)) return {};
    const QString text = decoded(file.read(maximumText));
    Content content;
    qsizetype start = 0;
    while (start < text.size() && content.lines.size() < maximumLines) {
        const qsizetype found = text.indexOf(u'\n', start);
        const qsizetype end = found < 0 ? text.size() : found;
        appendBroken(QStringView(text).sliced(start, end - start), content.lines);
        start = end + 1;
    }
    content.isCut = !file.atEnd() || start < text.size();
    return content;
}

QImage DocumentReaderQuick::pageImage(int page, int width) const {
    if (page < 0 || page >= mPdf->pageCount()) return {};
    const QSizeF size = mPdf->pageSize(page);
    return size.isEmpty() ? QImage() : mPdf->image(page, boundedSize(width, size));
}

QImage DocumentReaderQuick::pictureImage(int width) const {
    qt::GuardedFileQt file(mPath, mIsCancelled);
    QImageReader reader(&file, pictureFormat(mPath));
    const QSize size = pictureSize(reader);
    if (size.isEmpty()) return {};
    reader.setAutoTransform(true);
    const bool turned = isTurned(reader);
    const QSize shown = boundedSize(width, turned ? size.transposed() : size);
    const QSize wanted = turned ? shown.transposed() : shown;
    if (wanted.width() < size.width()) reader.setScaledSize(wanted);
    const QImage image = reader.read();
    return file.isOver() ? QImage() : image;
}

}  // namespace merovanta::quick

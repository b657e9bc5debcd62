#include "Qt/QuickChat/PdfQuick.h"

#include <QtCore/QRegularExpression>
#include <cmath>
#include <utility>

#include "Qt/Foundation/LimitedProcessQt.h"

namespace merovanta::quick {

namespace {

constexpr qsizetype maximumInformation = 1 << 20;
constexpr int bytesPerPixel = 3;
constexpr int maximumHeader = 64;

/// Empty if it is no size.
QSizeF sizeOf(const QString& width, const QString& height) {
    const QSizeF size(width.toDouble(), height.toDouble());
    return std::isfinite(size.width()) && std::isfinite(size.height()) ? size : QSizeF();
}

}  // namespace

PdfQuick::PdfQuick(QString path, const std::atomic<bool>& isCancelled)
    : mPath(std::move(path)), mIsCancelled(isCancelled) {}

bool PdfQuick::load() {
    const QByteArray information =
        qt::LimitedProcessQt::run(QStringLiteral("pdfinfo"),
                                  {QStringLiteral("-f"), QStringLiteral("1"), QStringLiteral("-l"),
                                   QString::number(maximumPages), mPath},
                                  maximumInformation, mIsCancelled);
    const auto lines = information.split('\n');
    for (const QByteArray& line : lines)
        takeLine(line);
    return !mPages.isEmpty();
}

void PdfQuick::takeLine(const QByteArray& line) {
    static const QRegularExpression count(QStringLiteral("^Pages:\\s+(\\d+)$"));
    static const QRegularExpression size(QStringLiteral("^Page\\s+(\\d+) size:\\s+(\\S+) x (\\S+) pts"));
    static const QRegularExpression turn(QStringLiteral("^Page\\s+(\\d+) rot:\\s+(\\d+)$"));
    const QString text = QString::fromLatin1(line);
    if (const auto match = count.match(text); match.hasMatch()) {
        mIsCut = match.captured(1).toLongLong() > maximumPages;
    } else if (const auto sized = size.match(text); sized.hasMatch()) {
        if (sized.captured(1).toInt() != pageCount() + 1 || pageCount() == maximumPages) return;
        mPages.append({.size = sizeOf(sized.captured(2), sized.captured(3))});
    } else if (const auto turned = turn.match(text); turned.hasMatch()) {
        if (mPages.isEmpty() || turned.captured(1).toInt() != pageCount()) return;
        mPages.last().isTurned = turned.captured(2).toInt() % 180 != 0;
    }
}

QSizeF PdfQuick::pageSize(int page) const {
    const Page& found = mPages[page];
    return found.isTurned ? found.size.transposed() : found.size;
}

QImage PdfQuick::image(int page, QSize size) const {
    // The program scales the page first and turns it then.
    const QSize scaled = mPages[page].isTurned ? size.transposed() : size;
    const QString number = QString::number(page + 1);
    const QByteArray ppm = qt::LimitedProcessQt::run(
        QStringLiteral("pdftoppm"),
        {QStringLiteral("-f"), number, QStringLiteral("-l"), number, QStringLiteral("-cropbox"),
         QStringLiteral("-scale-to-x"), QString::number(scaled.width()), QStringLiteral("-scale-to-y"),
         QString::number(scaled.height()), mPath},
        qsizetype{size.width()} * size.height() * bytesPerPixel + maximumHeader, mIsCancelled);
    const QImage drawn = QImage::fromData(ppm, "PPM");
    return drawn.size() == size ? drawn : QImage();
}

}  // namespace merovanta::quick

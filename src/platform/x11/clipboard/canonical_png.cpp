#include "platform/x11/clipboard/canonical_png.h"

#include <QBuffer>
#include <QImageWriter>

#include <cstring>

namespace tessary {

namespace {

bool isOpaque(const QImage &argb)
{
    for (int y = 0; y < argb.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(argb.constScanLine(y));
        for (int x = 0; x < argb.width(); ++x) {
            if (qAlpha(line[x]) != 255)
                return false;
        }
    }
    return true;
}

// The pixels alone: a view of the same memory that carries none of the source's metadata.
QImage pixelsOnly(const QImage &image)
{
    return QImage(image.constBits(), image.width(), image.height(), image.bytesPerLine(), image.format());
}

} // namespace

std::optional<PasteboardImage> CanonicalPng::encode(QImage image)
{
    if (image.isNull())
        return std::nullopt;
    // Converted at most once: a 40-megapixel picture is 160 MB per copy.
    QImage argb = std::move(image);
    if (argb.format() != QImage::Format_RGB32 && argb.format() != QImage::Format_ARGB32)
        argb.convertTo(QImage::Format_ARGB32);
    if (argb.format() == QImage::Format_ARGB32 && isOpaque(argb))
        argb.convertTo(QImage::Format_RGB32);
    const QImage canonical = pixelsOnly(argb);

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(canonical))
        return std::nullopt;
    return PasteboardImage{.png = png, .pixelWidth = canonical.width(), .pixelHeight = canonical.height()};
}

} // namespace tessary

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

// The pixels alone, in a fresh image that carries none of the source's metadata.
QImage pixelsOnly(const QImage &image, QImage::Format format)
{
    QImage fresh(image.size(), format);
    const auto bytes = static_cast<size_t>(std::min(fresh.bytesPerLine(), image.bytesPerLine()));
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(fresh.scanLine(y), image.constScanLine(y), bytes);
    return fresh;
}

} // namespace

std::optional<PasteboardImage> CanonicalPng::encode(const QImage &image)
{
    if (image.isNull())
        return std::nullopt;
    QImage argb = image.convertToFormat(QImage::Format_ARGB32);
    const QImage::Format format = isOpaque(argb) ? QImage::Format_RGB32 : QImage::Format_ARGB32;
    if (format == QImage::Format_RGB32)
        argb = argb.convertToFormat(QImage::Format_RGB32);
    const QImage canonical = pixelsOnly(argb, format);

    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(canonical))
        return std::nullopt;
    return PasteboardImage{.png = png, .pixelWidth = canonical.width(), .pixelHeight = canonical.height()};
}

} // namespace tessary

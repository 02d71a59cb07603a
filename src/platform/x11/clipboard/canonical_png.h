#pragma once

#include "core/platform/pasteboard.h"

#include <QImage>

#include <optional>

namespace tessary::CanonicalPng {

// The picture as PNG bytes that depend on its pixels only: text chunks,
// colour space and resolution are dropped, and the pixel format is reduced to
// 8-bit RGB, or RGBA when some pixel is not opaque. So the same picture gives
// the same bytes whether its owner offered PNG, BMP or anything else Qt reads.
// None for a null image or when encoding fails.
std::optional<PasteboardImage> encode(QImage image);

} // namespace tessary::CanonicalPng

#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QPixmap>

namespace tessary {

// The clipboard popup's fonts and colours, shared by the view and its rows.
namespace PopupStyle {

inline constexpr QColor pinColor{255, 149, 0};

// The system font at `pixels` logical pixels.
QFont font(int pixels);
// Text of lesser importance: details, symbols, the key legend.
QColor secondary(const QPalette &palette);
// `icon` as a silhouette in `color`, `side` logical pixels square.
QPixmap tinted(const QIcon &icon, int side, const QColor &color, qreal scale);

} // namespace PopupStyle

} // namespace tessary

#include "ui/clipboard/popup_style.h"

#include <QApplication>
#include <QPainter>

namespace tessary {

QFont PopupStyle::font(int pixels)
{
    QFont font = QApplication::font();
    font.setPixelSize(pixels);
    return font;
}

QColor PopupStyle::secondary(const QPalette &palette)
{
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(0.6f);
    return color;
}

QPixmap PopupStyle::tinted(const QIcon &icon, int side, const QColor &color, qreal scale)
{
    QPixmap pixmap = icon.pixmap(QSize(side, side), scale);
    pixmap.setDevicePixelRatio(scale);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

} // namespace tessary

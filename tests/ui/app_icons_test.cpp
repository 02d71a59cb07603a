#include "ui/app_icons.h"

#include <QPainter>

#include <cstdlib>

#include <gtest/gtest.h>

namespace tessary {
namespace {

// Share of the icon's pixels that stand out from `panel` once drawn on it. A
// line symbol with one-pixel strokes covers about a sixth of its square.
double contrastingShare(const QIcon &icon, int size, QColor panel)
{
    QImage image(size, size, QImage::Format_RGB32);
    image.fill(panel);
    QPainter painter(&image);
    icon.paint(&painter, image.rect());
    painter.end();
    int contrasting = 0;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x)
            contrasting += std::abs(qGray(image.pixel(x, y)) - qGray(panel.rgb())) >= 96;
    return double(contrasting) / (size * size);
}

TEST(AppIcons, traySymbolStandsOutOnLightAndDarkPanels)
{
    const QColor panels[] = {Qt::white, QColor(0xdcdcdc), QColor(0x808080), QColor(0x303030), Qt::black};
    for (int size : {16, 22, 24, 32}) {
        EXPECT_TRUE(AppIcons::tray().availableSizes().contains(QSize(size, size))) << size;
        for (const QColor &panel : panels)
            EXPECT_GE(contrastingShare(AppIcons::tray(), size, panel), 0.15)
                << size << " px on " << qPrintable(panel.name());
    }
}

TEST(AppIcons, applicationIconHasEveryThemeSize)
{
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QPixmap pixmap = AppIcons::application().pixmap(size, size);
        EXPECT_EQ(pixmap.size(), QSize(size, size));
        EXPECT_GT(contrastingShare(AppIcons::application(), size, Qt::white), 0.3) << size;
    }
}

} // namespace
} // namespace tessary

#include "ui/symbol_icons.h"

#include "core/app/hot_action.h"

#include <QImage>

#include <gtest/gtest.h>

namespace tessary {
namespace {

bool hasInkAt(const QImage &image, double fx, double fy)
{
    return qAlpha(image.pixel(int(fx * image.width()), int(fy * image.height()))) > 0;
}

bool hasInk(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                return true;
    return false;
}

// Without a theme icon, the settings' tab, action and row symbols and the
// launcher's symbols no icon theme names are drawn as pictures; only unknown
// symbols get the lettered badge.
TEST(SymbolIcons, symbolsInUseAreDrawnAsPicturesNotLetters)
{
    QStringList symbols = {QStringLiteral("gearshape"), QStringLiteral("rectangle.split.2x2"),
        QStringLiteral("doc.on.clipboard"), QStringLiteral("magnifyingglass"), QStringLiteral("text.append"),
        QStringLiteral("minus.circle"), QStringLiteral("circle.lefthalf.filled"), QStringLiteral("sparkles.tv")};
    for (HotAction action : HotActions::windowActions)
        symbols.append(iconName(action));
    for (const QString &symbol : symbols) {
        EXPECT_FALSE(SymbolIcons::icon(symbol).isNull()) << symbol.toStdString();
        const QImage image = SymbolIcons::drawn(symbol).pixmap(32, 32).toImage();
        const QImage badge
            = SymbolIcons::drawn(symbol.left(1) + QStringLiteral(".no.such.symbol")).pixmap(32, 32).toImage();
        EXPECT_TRUE(hasInk(image)) << symbol.toStdString();
        EXPECT_NE(image, badge) << symbol.toStdString();
    }
    EXPECT_TRUE(hasInk(SymbolIcons::icon(QStringLiteral("no.such.symbol")).pixmap(32, 32).toImage()));
}

TEST(SymbolIcons, drawnWindowSymbolsFillTheirPart)
{
    const struct {
        const char *symbol;
        QPointF filled;
        QPointF empty;
    } cases[] = {
        {"rectangle.lefthalf.inset.filled", {0.3, 0.5}, {0.7, 0.5}},
        {"rectangle.righthalf.inset.filled", {0.7, 0.5}, {0.3, 0.5}},
        {"rectangle.tophalf.inset.filled", {0.3, 0.35}, {0.3, 0.65}},
        {"rectangle.bottomhalf.inset.filled", {0.3, 0.65}, {0.3, 0.35}},
        {"rectangle.inset.topleft.filled", {0.3, 0.35}, {0.7, 0.65}},
        {"rectangle.inset.bottomright.filled", {0.7, 0.65}, {0.3, 0.35}},
        {"rectangle.center.inset.filled", {0.5, 0.5}, {0.15, 0.3}},
    };
    for (const auto &c : cases) {
        const QImage image = SymbolIcons::drawn(QString::fromLatin1(c.symbol)).pixmap(64, 64).toImage();
        EXPECT_TRUE(hasInkAt(image, c.filled.x(), c.filled.y())) << c.symbol;
        EXPECT_FALSE(hasInkAt(image, c.empty.x(), c.empty.y())) << c.symbol;
    }
}

} // namespace
} // namespace tessary

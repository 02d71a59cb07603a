#include "ui/symbol_icons.h"

#include <QGuiApplication>
#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace tessary {

namespace {

const QHash<QString, QStringList> &themeTable()
{
    static const QHash<QString, QStringList> table = {
        {QStringLiteral("rectangle.split.2x2"), {QStringLiteral("view-grid-symbolic"), QStringLiteral("view-grid")}},
        {QStringLiteral("rectangle.inset.filled"), {QStringLiteral("view-fullscreen")}},
        {QStringLiteral("display.2"), {QStringLiteral("video-display")}},
        {QStringLiteral("arrow.uturn.backward"), {QStringLiteral("edit-undo")}},
        {QStringLiteral("doc.on.clipboard"), {QStringLiteral("edit-paste")}},
        {QStringLiteral("magnifyingglass"), {QStringLiteral("edit-find"), QStringLiteral("system-search")}},
        {QStringLiteral("text.alignleft"), {QStringLiteral("format-justify-left")}},
        {QStringLiteral("text.append"), {QStringLiteral("insert-text")}},
        {QStringLiteral("doc"), {QStringLiteral("text-x-generic")}},
        {QStringLiteral("photo"), {QStringLiteral("image-x-generic")}},
        {QStringLiteral("tray"), {QStringLiteral("mail-inbox")}},
        {QStringLiteral("equal.circle"), {QStringLiteral("accessories-calculator")}},
        {QStringLiteral("lock"), {QStringLiteral("system-lock-screen")}},
        {QStringLiteral("moon.zzz"), {QStringLiteral("system-suspend")}},
        {QStringLiteral("trash"), {QStringLiteral("user-trash")}},
        {QStringLiteral("gearshape"), {QStringLiteral("preferences-system")}},
        {QStringLiteral("power"), {QStringLiteral("system-shutdown")}},
        {QStringLiteral("arrow.clockwise"), {QStringLiteral("system-reboot"), QStringLiteral("view-refresh")}},
        {QStringLiteral("rectangle.portrait.and.arrow.right"), {QStringLiteral("system-log-out")}},
        {QStringLiteral("minus.circle"), {QStringLiteral("list-remove")}},
        {QStringLiteral("checkmark.circle.fill"), {QStringLiteral("emblem-default")}},
        {QStringLiteral("exclamationmark.triangle"), {QStringLiteral("dialog-warning")}},
        {QStringLiteral("exclamationmark.triangle.fill"), {QStringLiteral("dialog-warning")}},
    };
    return table;
}

// The part of a window outline that a window-layout symbol fills, in unit coordinates.
std::optional<QRectF> filledPart(const QString &symbol)
{
    static const QHash<QString, QRectF> parts = {
        {QStringLiteral("rectangle.lefthalf.inset.filled"), {0, 0, 0.5, 1}},
        {QStringLiteral("rectangle.righthalf.inset.filled"), {0.5, 0, 0.5, 1}},
        {QStringLiteral("rectangle.tophalf.inset.filled"), {0, 0, 1, 0.5}},
        {QStringLiteral("rectangle.bottomhalf.inset.filled"), {0, 0.5, 1, 0.5}},
        {QStringLiteral("rectangle.inset.topleft.filled"), {0, 0, 0.5, 0.5}},
        {QStringLiteral("rectangle.inset.topright.filled"), {0.5, 0, 0.5, 0.5}},
        {QStringLiteral("rectangle.inset.bottomleft.filled"), {0, 0.5, 0.5, 0.5}},
        {QStringLiteral("rectangle.inset.bottomright.filled"), {0.5, 0.5, 0.5, 0.5}},
        {QStringLiteral("rectangle.inset.filled"), {0, 0, 1, 1}},
        {QStringLiteral("rectangle.center.inset.filled"), {0.25, 0.25, 0.5, 0.5}},
    };
    const auto found = parts.constFind(symbol);
    if (found == parts.cend())
        return std::nullopt;
    return *found;
}

// A gear: eight square teeth around a ring.
void drawGear(QPainter &painter, double size)
{
    const QPointF centre(size / 2, size / 2);
    const double outer = size * 0.46;
    const double inner = size * 0.34;
    const int teeth = 8;
    QPolygonF outline;
    for (int i = 0; i < teeth * 4; ++i) {
        // Each tooth: two points out, then two points in, a quarter step apart.
        const double angle = (i - 0.5) * std::numbers::pi / (teeth * 2);
        const double radius = (i % 4 < 2) ? outer : inner;
        outline << centre + QPointF(std::cos(angle) * radius, std::sin(angle) * radius);
    }
    painter.drawPolygon(outline);
    painter.drawEllipse(centre, size * 0.13, size * 0.13);
}

// Draws the symbols that have a picture of their own; false for any other.
bool drawKnownSymbol(QPainter &painter, const QString &symbol, double size)
{
    const double pen = std::max(1.0, size / 16);
    const QRectF outline(pen, size * 0.18, size - 2 * pen, size * 0.64);
    painter.setPen(QPen(painter.pen().color(), pen));
    const QColor ink = painter.pen().color();

    if (const auto part = filledPart(symbol)) {
        painter.drawRoundedRect(outline, pen * 1.5, pen * 1.5);
        const QRectF inner = outline.adjusted(pen * 1.5, pen * 1.5, -pen * 1.5, -pen * 1.5);
        painter.fillRect(QRectF(inner.x() + part->x() * inner.width(), inner.y() + part->y() * inner.height(),
                             part->width() * inner.width(), part->height() * inner.height()),
            ink);
        return true;
    }
    if (symbol.startsWith(QLatin1String("rectangle.split."))) {
        const int columns = symbol.endsWith(QLatin1String("3x1")) ? 3 : 2;
        const int rows = symbol.endsWith(QLatin1String("2x2")) ? 2 : 1;
        painter.drawRoundedRect(outline, pen * 1.5, pen * 1.5);
        for (int c = 1; c < columns; ++c) {
            const double x = outline.x() + outline.width() * c / columns;
            painter.drawLine(QPointF(x, outline.top()), QPointF(x, outline.bottom()));
        }
        for (int r = 1; r < rows; ++r) {
            const double y = outline.y() + outline.height() * r / rows;
            painter.drawLine(QPointF(outline.left(), y), QPointF(outline.right(), y));
        }
        return true;
    }
    if (symbol == QLatin1String("display.2")) {
        painter.drawRect(QRectF(pen, size * 0.2, size * 0.5, size * 0.4));
        painter.drawRect(QRectF(size * 0.45, size * 0.4, size * 0.5, size * 0.4));
        return true;
    }
    if (symbol == QLatin1String("text.alignleft")) {
        for (const double line : {0.0, 1.0, 2.0, 3.0}) {
            const double y = size * (0.22 + line * 0.19);
            painter.drawLine(QPointF(size * 0.12, y), QPointF(size * (line == 3 ? 0.6 : line == 1 ? 0.75 : 0.88), y));
        }
        return true;
    }
    if (symbol == QLatin1String("doc") || symbol == QLatin1String("doc.on.clipboard")) {
        const bool clipboard = symbol == QLatin1String("doc.on.clipboard");
        const QRectF page(size * 0.2, size * (clipboard ? 0.12 : 0.06), size * 0.6, size * (clipboard ? 0.82 : 0.88));
        const double fold = size * 0.2;
        QPolygonF outlinePath;
        outlinePath << page.topLeft() << QPointF(page.right() - fold, page.top())
                    << QPointF(page.right(), page.top() + fold) << page.bottomRight() << page.bottomLeft();
        painter.drawPolygon(clipboard ? QPolygonF(page) : outlinePath);
        if (clipboard)
            painter.fillRect(QRectF(size * 0.36, size * 0.04, size * 0.28, size * 0.14), ink);
        else
            painter.drawPolyline(QPolygonF({QPointF(page.right() - fold, page.top()),
                QPointF(page.right() - fold, page.top() + fold), QPointF(page.right(), page.top() + fold)}));
        for (const double y : {0.45, 0.6, 0.75})
            painter.drawLine(QPointF(size * 0.32, size * y), QPointF(size * 0.68, size * y));
        return true;
    }
    if (symbol == QLatin1String("photo")) {
        const QRectF frame(pen, size * 0.16, size - 2 * pen, size * 0.68);
        painter.drawRoundedRect(frame, pen * 1.5, pen * 1.5);
        painter.drawPolyline(QPolygonF({QPointF(frame.left(), frame.bottom() - size * 0.08),
            QPointF(size * 0.38, size * 0.45), QPointF(size * 0.58, size * 0.65), QPointF(size * 0.72, size * 0.52),
            QPointF(frame.right(), frame.bottom() - size * 0.12)}));
        painter.drawEllipse(QPointF(size * 0.72, size * 0.32), size * 0.06, size * 0.06);
        return true;
    }
    if (symbol == QLatin1String("tray")) {
        const QRectF box(pen, size * 0.3, size - 2 * pen, size * 0.5);
        painter.drawRoundedRect(box, pen * 1.5, pen * 1.5);
        painter.drawPolyline(QPolygonF({QPointF(box.left(), size * 0.55), QPointF(size * 0.34, size * 0.55),
            QPointF(size * 0.4, size * 0.65), QPointF(size * 0.6, size * 0.65), QPointF(size * 0.66, size * 0.55),
            QPointF(box.right(), size * 0.55)}));
        return true;
    }
    if (symbol == QLatin1String("gearshape")) {
        drawGear(painter, size);
        return true;
    }
    if (symbol == QLatin1String("magnifyingglass")) {
        painter.drawEllipse(QPointF(size * 0.42, size * 0.42), size * 0.27, size * 0.27);
        painter.setPen(QPen(ink, pen * 2, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(size * 0.62, size * 0.62), QPointF(size * 0.88, size * 0.88));
        return true;
    }
    if (symbol == QLatin1String("text.append")) {
        // Lines of text and a plus where more is added.
        for (const double y : {0.2, 0.4})
            painter.drawLine(QPointF(size * 0.1, size * y), QPointF(size * 0.9, size * y));
        painter.drawLine(QPointF(size * 0.1, size * 0.6), QPointF(size * 0.5, size * 0.6));
        painter.drawLine(QPointF(size * 0.58, size * 0.78), QPointF(size * 0.9, size * 0.78));
        painter.drawLine(QPointF(size * 0.74, size * 0.62), QPointF(size * 0.74, size * 0.94));
        return true;
    }
    if (symbol == QLatin1String("arrow.uturn.backward")) {
        QPainterPath path(QPointF(size * 0.3, size * 0.8));
        path.lineTo(size * 0.62, size * 0.8);
        path.arcTo(QRectF(size * 0.44, size * 0.3, size * 0.5, size * 0.5), -90, 180);
        path.lineTo(size * 0.14, size * 0.3);
        painter.drawPath(path);
        painter.drawPolyline(QPolygonF(
            {QPointF(size * 0.32, size * 0.12), QPointF(size * 0.14, size * 0.3), QPointF(size * 0.32, size * 0.48)}));
        return true;
    }
    if (symbol == QLatin1String("minus.circle")) {
        painter.drawEllipse(QRectF(pen, pen, size - 2 * pen, size - 2 * pen));
        painter.drawLine(QPointF(size * 0.28, size * 0.5), QPointF(size * 0.72, size * 0.5));
        return true;
    }
    if (symbol == QLatin1String("circle.lefthalf.filled")) {
        // Light and dark side by side: the appearance switch.
        const QRectF disc(pen, pen, size - 2 * pen, size - 2 * pen);
        painter.drawEllipse(disc);
        painter.setBrush(ink);
        painter.drawPie(disc, 90 * 16, 180 * 16);
        return true;
    }
    if (symbol == QLatin1String("sparkles.tv")) {
        // A screen with a star on it, and its stand.
        const QRectF screen(pen, size * 0.14, size - 2 * pen, size * 0.6);
        painter.drawRoundedRect(screen, pen * 1.5, pen * 1.5);
        painter.drawLine(QPointF(size * 0.3, size * 0.88), QPointF(size * 0.7, size * 0.88));
        const QPointF centre = screen.center();
        const double arm = size * 0.18;
        painter.drawLine(centre - QPointF(arm, 0), centre + QPointF(arm, 0));
        painter.drawLine(centre - QPointF(0, arm), centre + QPointF(0, arm));
        const double diagonal = arm * 0.5;
        painter.drawLine(centre - QPointF(diagonal, diagonal), centre + QPointF(diagonal, diagonal));
        painter.drawLine(centre - QPointF(diagonal, -diagonal), centre + QPointF(diagonal, -diagonal));
        return true;
    }
    if (symbol == QLatin1String("pin.fill")) {
        painter.setBrush(ink);
        painter.drawEllipse(QRectF(size * 0.3, size * 0.05, size * 0.4, size * 0.4));
        painter.drawLine(QPointF(size * 0.5, size * 0.45), QPointF(size * 0.5, size * 0.95));
        return true;
    }
    return false;
}

void drawSymbol(QPainter &painter, const QString &symbol, double size)
{
    if (drawKnownSymbol(painter, symbol, size))
        return;
    // Anything else: a round badge with the symbol's first letter.
    const double pen = std::max(1.0, size / 16);
    painter.drawEllipse(QRectF(pen, pen, size - 2 * pen, size - 2 * pen));
    QFont font = painter.font();
    font.setPixelSize(int(size * 0.55));
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRectF(0, 0, size, size), Qt::AlignCenter, symbol.left(1).toUpper());
}

} // namespace

QStringList SymbolIcons::themeNames(const QString &symbol) { return themeTable().value(symbol); }

QIcon SymbolIcons::drawn(const QString &symbol)
{
    QIcon icon;
    const QColor ink = QGuiApplication::palette().color(QPalette::WindowText);
    for (const int size : {16, 22, 32, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(ink);
        drawSymbol(painter, symbol, size);
        painter.end();
        icon.addPixmap(pixmap);
    }
    icon.setIsMask(true);
    return icon;
}

QIcon SymbolIcons::icon(const QString &symbol)
{
    for (const QString &name : themeNames(symbol)) {
        if (QIcon::hasThemeIcon(name))
            return QIcon::fromTheme(name);
    }
    return drawn(symbol);
}

} // namespace tessary

#pragma once

#include <QRect>
#include <QString>

class QWidget;

namespace tessary {

// Short notices near the bottom of the primary screen. At most one toast is
// visible: a new one removes the previous one at once, and an older toast's
// timer never hides a newer toast. Main thread only.
class Toast {
public:
    static void show(const QString &message, double seconds);

    // The shown toast window, or null.
    static QWidget *current();

    // 8 per character plus 50, kept within 200…520.
    static int widthFor(const QString &message);
    static constexpr int height = 44;
    // Horizontally centred on `available`, its bottom edge 90 above the area's bottom.
    static QRect frameOn(const QRect &available, int width);
};

} // namespace tessary

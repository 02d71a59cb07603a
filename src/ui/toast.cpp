#include "ui/toast.h"

#include "ui/floating_panel.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QScreen>
#include <QTextBoundaryFinder>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace tessary {

namespace {

constexpr double cornerRadius = 12;

QPointer<FloatingPanel> &shown()
{
    static QPointer<FloatingPanel> panel;
    return panel;
}

qsizetype characterCount(const QString &text)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

class ToastView : public FloatingPanel {
public:
    ToastView(const QString &message, int width)
        : FloatingPanel(Input::none)
    {
        setFixedSize(width, Toast::height);
        auto *label = new QLabel(message, this);
        QFont font = label->font();
        font.setPixelSize(13);
        font.setWeight(QFont::Medium);
        label->setFont(font);
        label->setTextFormat(Qt::PlainText);
        auto *layout = new QHBoxLayout(this);
        layout->setContentsMargins(16, 0, 16, 0);
        layout->addWidget(label, 0, Qt::AlignVCenter | Qt::AlignLeft);
        // Not told whether anything composites: cut always, which also paints
        // the background.
        cutToRoundedShape(cornerRadius);
    }
};

} // namespace

int Toast::widthFor(const QString &message)
{
    const qsizetype raw = characterCount(message) * 8 + 50;
    return int(std::clamp<qsizetype>(raw, 200, 520));
}

QRect Toast::frameOn(const QRect &available, int width)
{
    const double x = available.x() + available.width() / 2.0 - width / 2.0;
    const int bottom = available.y() + available.height() - 90;
    return QRect(int(std::lround(x)), bottom - height, width, height);
}

QWidget *Toast::current() { return shown(); }

void Toast::show(const QString &message, double seconds)
{
    if (FloatingPanel *previous = shown()) {
        previous->hide();
        // Its pending hide dies with it.
        previous->deleteLater();
    }
    const int width = widthFor(message);
    auto *toast = new ToastView(message, width);
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen && !QGuiApplication::screens().isEmpty())
        screen = QGuiApplication::screens().constFirst();
    if (screen)
        toast->setGeometry(frameOn(screen->availableGeometry(), width));
    toast->show();
    shown() = toast;
    QTimer::singleShot(int(std::lround(seconds * 1000)), toast, [toast] {
        toast->hide();
        toast->deleteLater();
    });
}

} // namespace tessary

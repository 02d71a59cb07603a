// The yardstick for start-up: an empty Qt tray application with a one-item
// menu, reporting like tessary does when its tray icon is up.
#include <QApplication>
#include <QDateTime>
#include <QMenu>
#include <QSystemTrayIcon>

#include <cstdio>

#include <sys/resource.h>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QMenu menu;
    menu.addAction(QStringLiteral("Quit"));
    QSystemTrayIcon icon;
    icon.setContextMenu(&menu);
    icon.show();
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const long long cpuMs = (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000LL
        + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
    std::fprintf(stderr, "ready at %lld ms since the epoch after %lld ms of CPU\n",
        static_cast<long long>(QDateTime::currentMSecsSinceEpoch()), cpuMs);
    return QApplication::exec();
}

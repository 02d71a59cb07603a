// A clipboard owner offering several targets at once, which xclip cannot:
//   tessary_test_clipboard_owner <type> <content> [<type> <content> ...]
// Prints "owning" once it holds the CLIPBOARD selection and exits when it
// loses it (or after a minute).
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.isEmpty() || args.size() % 2 != 0) {
        std::fprintf(stderr, "usage: %s <type> <content> [<type> <content> ...]\n", argv[0]);
        return 2;
    }
    auto *data = new QMimeData;
    for (qsizetype i = 0; i < args.size(); i += 2)
        data->setData(args[i], args[i + 1].toUtf8());
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->setMimeData(data, QClipboard::Clipboard);
    QObject::connect(clipboard, &QClipboard::dataChanged, &app, &QCoreApplication::quit);
    QTimer::singleShot(60'000, &app, &QCoreApplication::quit);
    std::printf("owning\n");
    std::fflush(stdout);
    return app.exec();
}

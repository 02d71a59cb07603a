#include "platform/x11/launcher/gio_desktop_opener.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QLoggingCategory>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

namespace tessary {

Q_LOGGING_CATEGORY(lcOpener, "tessary.launcher.opener")

namespace {

constexpr int fileManagerTimeoutMs = 3000;

bool launchDefault(const QByteArray &uri)
{
    GError *error = nullptr;
    const bool launched = g_app_info_launch_default_for_uri(uri.constData(), nullptr, &error);
    if (!launched) {
        qCDebug(lcOpener) << "no handler for" << uri << (error ? error->message : "");
        g_clear_error(&error);
    }
    return launched;
}

} // namespace

GioDesktopOpener::GioDesktopOpener(QObject *parent)
    : QObject(parent)
{
}

bool GioDesktopOpener::openUrl(const QUrl &url)
{
    if (!url.isValid() || url.scheme().isEmpty())
        return false;
    return launchDefault(url.toEncoded());
}

bool GioDesktopOpener::openFile(const QString &path)
{
    if (!QFileInfo::exists(path))
        return false;
    return launchDefault(QUrl::fromLocalFile(path).toEncoded());
}

bool GioDesktopOpener::openApplication(const QString &path)
{
    GDesktopAppInfo *info = g_desktop_app_info_new_from_filename(QFile::encodeName(path).constData());
    if (!info)
        return false;
    GError *error = nullptr;
    const bool launched = g_app_info_launch(G_APP_INFO(info), nullptr, nullptr, &error);
    if (!launched) {
        qCDebug(lcOpener) << "cannot launch" << path << (error ? error->message : "");
        g_clear_error(&error);
    }
    g_object_unref(info);
    return launched;
}

bool GioDesktopOpener::revealInFileManager(const QString &path)
{
    const QFileInfo item(path);
    if (!item.exists())
        return false;
    const QString folder = item.absolutePath();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return openFile(folder);

    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"), QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("ShowItems"));
    call << QStringList{QString::fromUtf8(QUrl::fromLocalFile(item.absoluteFilePath()).toEncoded())} << QString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, fileManagerTimeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, folder] {
        if (watcher->isError()) {
            qCDebug(lcOpener) << "no file manager to reveal in:" << watcher->error().message();
            openFile(folder);
        }
        watcher->deleteLater();
    });
    return true;
}

} // namespace tessary

#include "platform/x11/launcher/gio_desktop_opener.h"

#include "platform/x11/launcher/startup_launch_context.h"
#include "platform/x11/launcher/startup_notifier.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QFileInfo>
#include <QLoggingCategory>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include <optional>

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

GioDesktopOpener::GioDesktopOpener(StartupNotifier *notifier, QObject *parent)
    : QObject(parent)
    , m_notifier(notifier)
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
    std::optional<StartupNotifier::Sequence> sequence;
    if (m_notifier && g_desktop_app_info_get_boolean(info, "StartupNotify")) {
        const auto text = [info](const char *key) {
            gchar *value = g_desktop_app_info_get_string(info, key);
            const QByteArray bytes(value);
            g_free(value);
            return bytes;
        };
        sequence.emplace(m_notifier->begin({g_app_info_get_name(G_APP_INFO(info)),
            g_app_info_get_executable(G_APP_INFO(info)), text("Icon"), text("StartupWMClass")}));
    }
    GAppLaunchContext *context = newStartupLaunchContext(sequence ? sequence->startupId() : QByteArray());
    GError *error = nullptr;
    const bool launched = g_app_info_launch(G_APP_INFO(info), nullptr, context, &error);
    if (!launched) {
        qCDebug(lcOpener) << "cannot launch" << path << (error ? error->message : "");
        g_clear_error(&error);
        if (sequence)
            sequence->cancel();
    }
    g_object_unref(context);
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

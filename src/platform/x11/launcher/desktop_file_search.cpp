#include "platform/x11/launcher/desktop_file_search.h"

#include "platform/x11/launcher/session/dbus_call.h"

#include <QDBusServiceWatcher>

namespace tessary {

DesktopFileSearch::DesktopFileSearch(FileSearchBackend &index, const QString &indexService, FileSearchBackend &fallback,
    const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_index(index)
    , m_fallback(fallback)
{
    auto *watcher = new QDBusServiceWatcher(indexService, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &owner) { setIndexRunning(!owner.isEmpty()); });
    const DBusCall hasOwner{QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"), {indexService}};
    hasOwner.send(bus, this, [this](const QDBusMessage &reply) {
        if (succeeded(reply) && !reply.arguments().isEmpty())
            setIndexRunning(reply.arguments().constFirst().toBool());
        m_probed = true;
        Q_EMIT probeAnswered();
    });
}

void DesktopFileSearch::start(const QString &text, std::function<void(QStringList paths)> finished)
{
    stop();
    (m_indexRunning ? m_index : m_fallback).start(text, std::move(finished));
}

void DesktopFileSearch::stop()
{
    m_index.stop();
    m_fallback.stop();
}

void DesktopFileSearch::setIndexRunning(bool running)
{
    if (running == m_indexRunning)
        return;
    m_indexRunning = running;
    Q_EMIT indexRunningChanged(running);
}

} // namespace tessary

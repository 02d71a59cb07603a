#include "core/shortcuts/hot_key_center.h"

#include "core/shortcuts/shortcuts_logging.h"

#include <QMetaObject>
#include <QPointer>

namespace tessary {

HotKeyCenter::HotKeyCenter(HotKeyService &service, quint32 firstId, QObject *parent)
    : QObject(parent)
    , m_service(service)
    , m_nextId(firstId)
{
}

HotKeyCenter::~HotKeyCenter()
{
    unregisterAll();
    if (m_installed) {
        m_service.setPressedHandler({});
        m_service.setKeyboardChangedHandler({});
    }
}

std::optional<quint32> HotKeyCenter::registerHotKey(const KeyCombo &combo, std::function<void()> handler)
{
    installHandlerIfNeeded();
    const QList<quint32> live = m_refs.keys();
    const quint32 id = unusedId(m_nextId, QSet<quint32>(live.cbegin(), live.cend()));
    const std::optional<quint64> reference = m_service.registerHotKey(combo, id);
    if (!reference) {
        qCDebug(lcShortcuts) << "refused:" << combo.display();
        return std::nullopt;
    }
    m_nextId = id + 1;
    m_refs.insert(id, *reference);
    m_handlers.insert(id, std::move(handler));
    return id;
}

void HotKeyCenter::unregisterAll()
{
    for (const quint64 reference : std::as_const(m_refs))
        m_service.unregisterHotKey(reference);
    m_refs.clear();
    m_handlers.clear();
}

void HotKeyCenter::installHandlerIfNeeded()
{
    if (m_installed)
        return;
    m_installed = true;
    const QPointer<HotKeyCenter> self(this);
    m_service.setPressedHandler([self](quint32 id) {
        if (self)
            self->fire(id);
    });
    m_service.setKeyboardChangedHandler([self] {
        if (self)
            Q_EMIT self->keyboardChanged();
    });
}

void HotKeyCenter::fire(quint32 id)
{
    const auto it = m_handlers.constFind(id);
    if (it == m_handlers.cend())
        return;
    QMetaObject::invokeMethod(this, *it, Qt::QueuedConnection);
}

quint32 HotKeyCenter::unusedId(quint32 next, const QSet<quint32> &live)
{
    quint32 id = next;
    while (id == 0 || live.contains(id))
        ++id;
    return id;
}

} // namespace tessary

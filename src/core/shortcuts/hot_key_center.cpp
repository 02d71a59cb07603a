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
    if (m_installed)
        m_service.setPressedHandler({});
}

std::optional<quint32> HotKeyCenter::registerHotKey(const KeyCombo &combo, std::function<void()> handler)
{
    installHandlerIfNeeded();
    const quint32 id = unusedId();
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
}

void HotKeyCenter::fire(quint32 id)
{
    const auto it = m_handlers.constFind(id);
    if (it == m_handlers.cend())
        return;
    QMetaObject::invokeMethod(this, *it, Qt::QueuedConnection);
}

quint32 HotKeyCenter::unusedId()
{
    // Past the end of the id space numbering starts again at 1, skipping ids
    // that are still registered; 0 is never handed out.
    quint32 id = m_nextId;
    while (id == 0 || m_refs.contains(id))
        ++id;
    return id;
}

} // namespace tessary

#pragma once

#include "core/platform/hot_key_service.h"
#include "core/shortcuts/key_combo.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <functional>
#include <optional>

namespace tessary {

// System-wide shortcuts: registers combinations with the platform under ids of
// its own and runs a combination's handler when it is pressed, whichever
// application is in front. Not a singleton: the application owns exactly one
// (a second would fight the first over the platform's pressed handler). The
// service must outlive it; its registrations are released when it is
// destroyed. Main thread only.
class HotKeyCenter : public QObject {
    Q_OBJECT

public:
    // `firstId` is where numbering starts; only tests of the id space's end
    // pass anything but 1.
    explicit HotKeyCenter(HotKeyService &service, quint32 firstId = 1, QObject *parent = nullptr);
    ~HotKeyCenter() override;

    // The id the combination is registered under, or none when the platform
    // refused it (another application or this one holds it). Ids grow by one
    // per successful registration, are not reused, and never wrap onto an id
    // still registered. `handler` runs on a later turn of the event loop than
    // the key press, never inside the platform's callback.
    std::optional<quint32> registerHotKey(const KeyCombo &combo, std::function<void()> handler);
    // Releases every registration and forgets every handler; ids keep growing.
    void unregisterAll();

    // The id for the next registration when `next` is due and `live` are still
    // registered: `next` itself unless it is 0 (the count went past the
    // largest id) or live, else the first id after it that is neither.
    static quint32 unusedId(quint32 next, const QSet<quint32> &live);

Q_SIGNALS:
    // The keyboard changed: registrations may have been lost or become possible.
    void keyboardChanged();

private:
    void installHandlerIfNeeded();
    void fire(quint32 id);

    HotKeyService &m_service;
    QHash<quint32, quint64> m_refs;
    QHash<quint32, std::function<void()>> m_handlers;
    quint32 m_nextId;
    bool m_installed = false;
};

} // namespace tessary

#include "platform/fake/windows/fake_hot_key_service.h"

namespace tessary {

bool FakeHotKeyService::press(const KeyCombo &combo)
{
    for (const Registration &registration : std::as_const(m_registrations)) {
        if (registration.combo == combo) {
            deliverPressed(registration.id);
            return true;
        }
    }
    return false;
}

void FakeHotKeyService::deliverPressed(quint32 id)
{
    if (m_pressed)
        m_pressed(id);
}

bool FakeHotKeyService::isRegistered(const KeyCombo &combo) const
{
    for (const Registration &registration : m_registrations) {
        if (registration.combo == combo)
            return true;
    }
    return false;
}

void FakeHotKeyService::setPressedHandler(std::function<void(quint32 id)> handler) { m_pressed = std::move(handler); }

std::optional<quint64> FakeHotKeyService::registerHotKey(const KeyCombo &combo, quint32 id)
{
    if (m_heldElsewhere.contains(combo) || isRegistered(combo))
        return std::nullopt;
    const quint64 reference = m_nextReference++;
    m_registrations.insert(reference, Registration{combo, id});
    return reference;
}

void FakeHotKeyService::unregisterHotKey(quint64 reference) { m_registrations.remove(reference); }

} // namespace tessary

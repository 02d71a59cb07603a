#include "platform/x11/launcher/desktop_file_search_chain.h"

namespace tessary {

DesktopFileSearchChain::DesktopFileSearchChain(const QString &homePath, QObject *parent)
    : QObject(parent)
    , m_homePath(homePath)
    , m_walk(homePath)
    , m_kdeIndex(homePath)
    , m_kdeOrWalk(m_kdeIndex, QString::fromLatin1(BalooFileSearch::service), m_walk)
    , m_gnomeIndex(homePath)
    , m_gnomeOrKde(m_gnomeIndex, QString::fromLatin1(TrackerFileSearch::service), m_kdeOrWalk)
{
    for (const DesktopFileSearch *part : {&m_kdeOrWalk, &m_gnomeOrKde}) {
        connect(part, &DesktopFileSearch::probeAnswered, this, [this] {
            if (probed())
                Q_EMIT probeAnswered();
        });
    }
}

QString DesktopFileSearchChain::source() const
{
    if (m_gnomeOrKde.usesIndex())
        return QStringLiteral("GNOME's file index");
    if (m_kdeOrWalk.usesIndex())
        return QStringLiteral("KDE's file index");
    return QStringLiteral("a walk of %1").arg(m_homePath);
}

} // namespace tessary

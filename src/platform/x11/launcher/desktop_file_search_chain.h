#pragma once

#include "platform/x11/launcher/baloo_file_search.h"
#include "platform/x11/launcher/desktop_file_search.h"
#include "platform/x11/launcher/home_walk_file_search.h"
#include "platform/x11/launcher/tracker_file_search.h"

#include <QObject>

namespace tessary {

// File search as the desktop offers it: GNOME's index while it runs, else
// KDE's index while it runs, else a walk of the home folder.
class DesktopFileSearchChain final : public QObject {
    Q_OBJECT

public:
    explicit DesktopFileSearchChain(const QString &homePath, QObject *parent = nullptr);

    FileSearchBackend &search() { return m_gnomeOrKde; }
    // Which backend a search starts now, as the user knows it.
    QString source() const;
    bool usesIndex() const { return m_gnomeOrKde.usesIndex() || m_kdeOrWalk.usesIndex(); }
    // Whether the bus has said which indexes run; until then searches walk.
    bool probed() const { return m_gnomeOrKde.probed() && m_kdeOrWalk.probed(); }

Q_SIGNALS:
    void probeAnswered();

private:
    QString m_homePath;
    HomeWalkFileSearch m_walk;
    BalooFileSearch m_kdeIndex;
    DesktopFileSearch m_kdeOrWalk;
    TrackerFileSearch m_gnomeIndex;
    DesktopFileSearch m_gnomeOrKde;
};

} // namespace tessary

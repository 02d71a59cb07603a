#pragma once

#include "core/platform/file_search_backend.h"

#include <QDBusConnection>
#include <QObject>

namespace tessary {

// The desktop's own file index while one runs on the session bus, else the
// given fallback (the home walk). Whether an index runs is asked at
// construction and then followed as it starts and stops, never waited for.
class DesktopFileSearch final : public QObject, public FileSearchBackend {
    Q_OBJECT

public:
    DesktopFileSearch(FileSearchBackend &index, const QString &indexService, FileSearchBackend &fallback,
        const QDBusConnection &bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    void start(const QString &text, std::function<void(QStringList paths)> finished) override;
    void stop() override;

    bool usesIndex() const { return m_indexRunning; }
    // Whether the bus has answered whether the index runs (or failed to).
    bool probed() const { return m_probed; }

Q_SIGNALS:
    void indexRunningChanged(bool running);
    // Once, when the bus's first answer is in.
    void probeAnswered();

private:
    void setIndexRunning(bool running);

    FileSearchBackend &m_index;
    FileSearchBackend &m_fallback;
    bool m_indexRunning = false;
    bool m_probed = false;
};

} // namespace tessary

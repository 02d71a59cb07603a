#pragma once

#include "core/platform/file_search_backend.h"

#include <QString>

typedef struct _GDBusConnection GDBusConnection;
typedef struct _TrackerSparqlConnection TrackerSparqlConnection;

namespace tessary {

// File search through GNOME's file index: a SPARQL query to the file miner's
// D-Bus endpoint, names matched ignoring case and accents, newest
// modification first. Nothing blocks: connecting, querying and reading the
// answer all run on the GLib main loop that Qt's event loop drives.
class TrackerFileSearch final : public FileSearchBackend {
public:
    static constexpr const char *service = "org.freedesktop.Tracker3.Miner.Files";

    // `bus` is where the index runs; null means the session bus.
    explicit TrackerFileSearch(QString home, GDBusConnection *bus = nullptr);
    ~TrackerFileSearch() override;
    TrackerFileSearch(const TrackerFileSearch &) = delete;
    TrackerFileSearch &operator=(const TrackerFileSearch &) = delete;

    // An index that cannot be reached answers with no paths.
    void start(const QString &text, std::function<void(QStringList paths)> finished) override;
    void stop() override;

private:
    struct Search;
    // GLib's callbacks.
    struct Steps;
    friend struct Steps;

    void query(Search *search);
    void deliver(Search *search);

    const QString m_home;
    GDBusConnection *m_bus;
    TrackerSparqlConnection *m_connection = nullptr;
    Search *m_search = nullptr;
};

} // namespace tessary

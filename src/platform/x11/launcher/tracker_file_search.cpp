#include "platform/x11/launcher/tracker_file_search.h"

#include "platform/x11/launcher/home_walk_file_search.h"

#include <QUrl>

#include <libtracker-sparql/tracker-sparql.h>

namespace tessary {

namespace {

// The files' own graph: other graphs repeat the same resources.
const char *const namesQuery = "SELECT DISTINCT ?url ?modified WHERE { GRAPH tracker:FileSystem {"
                               "  ?file a nfo:FileDataObject ; nie:url ?url ; nfo:fileName ?name ;"
                               "        nfo:fileLastModified ?modified ."
                               "  FILTER (STRSTARTS(?url, ~home)"
                               "          && CONTAINS(tracker:case-fold(tracker:unaccent(?name)), ~text))"
                               "} } ORDER BY DESC(?modified) LIMIT 200";

} // namespace

// Lives until GLib's last callback for it has run, which may be after the
// search was stopped and its owner destroyed; a cancelled search touches only
// itself.
struct TrackerFileSearch::Search {
    explicit Search(TrackerFileSearch *searcher)
        : owner(searcher)
    {
    }

    TrackerFileSearch *owner;
    GCancellable *cancellable = g_cancellable_new();
    std::function<void(QStringList)> finished;
    QString text;
    QStringList paths;

    ~Search() { g_object_unref(cancellable); }
    bool cancelled() const { return g_cancellable_is_cancelled(cancellable); }
};

struct TrackerFileSearch::Steps {
    static void connected(GObject *source, GAsyncResult *result, gpointer data);
    static void executed(GObject *source, GAsyncResult *result, gpointer data);
    static void advanced(GObject *source, GAsyncResult *result, gpointer data);
};

TrackerFileSearch::TrackerFileSearch(QString home, GDBusConnection *bus)
    : m_home(std::move(home))
    , m_bus(bus ? G_DBUS_CONNECTION(g_object_ref(bus)) : nullptr)
{
}

TrackerFileSearch::~TrackerFileSearch()
{
    stop();
    if (m_connection)
        g_object_unref(m_connection);
    if (m_bus)
        g_object_unref(m_bus);
}

void TrackerFileSearch::start(const QString &text, std::function<void(QStringList paths)> finished)
{
    stop();
    m_search = new Search(this);
    m_search->finished = std::move(finished);
    m_search->text = HomeWalkFileSearch::folded(text);
    if (m_connection) {
        query(m_search);
        return;
    }
    tracker_sparql_connection_bus_new_async(service, nullptr, m_bus, m_search->cancellable, Steps::connected, m_search);
}

void TrackerFileSearch::stop()
{
    if (!m_search)
        return;
    // Freed by its pending callback, which sees the cancellation.
    g_cancellable_cancel(m_search->cancellable);
    m_search = nullptr;
}

void TrackerFileSearch::Steps::connected(GObject *, GAsyncResult *result, gpointer data)
{
    auto *search = static_cast<Search *>(data);
    GError *error = nullptr;
    TrackerSparqlConnection *connection = tracker_sparql_connection_bus_new_finish(result, &error);
    g_clear_error(&error);
    if (search->cancelled()) {
        if (connection)
            g_object_unref(connection);
        delete search;
        return;
    }
    if (!connection) {
        search->owner->deliver(search);
        return;
    }
    search->owner->m_connection = connection;
    search->owner->query(search);
}

void TrackerFileSearch::query(Search *search)
{
    GError *error = nullptr;
    TrackerSparqlStatement *statement
        = tracker_sparql_connection_query_statement(m_connection, namesQuery, search->cancellable, &error);
    g_clear_error(&error);
    if (!statement) {
        deliver(search);
        return;
    }
    const QByteArray home = QUrl::fromLocalFile(m_home).toEncoded() + '/';
    tracker_sparql_statement_bind_string(statement, "home", home.constData());
    tracker_sparql_statement_bind_string(statement, "text", search->text.toUtf8().constData());
    tracker_sparql_statement_execute_async(statement, search->cancellable, Steps::executed, search);
    g_object_unref(statement);
}

void TrackerFileSearch::Steps::executed(GObject *source, GAsyncResult *result, gpointer data)
{
    auto *search = static_cast<Search *>(data);
    GError *error = nullptr;
    TrackerSparqlCursor *cursor
        = tracker_sparql_statement_execute_finish(TRACKER_SPARQL_STATEMENT(source), result, &error);
    g_clear_error(&error);
    if (search->cancelled()) {
        if (cursor)
            g_object_unref(cursor);
        delete search;
        return;
    }
    if (!cursor) {
        search->owner->deliver(search);
        return;
    }
    tracker_sparql_cursor_next_async(cursor, search->cancellable, advanced, search);
}

void TrackerFileSearch::Steps::advanced(GObject *source, GAsyncResult *result, gpointer data)
{
    auto *search = static_cast<Search *>(data);
    TrackerSparqlCursor *cursor = TRACKER_SPARQL_CURSOR(source);
    GError *error = nullptr;
    const bool row = tracker_sparql_cursor_next_finish(cursor, result, &error);
    g_clear_error(&error);
    if (search->cancelled()) {
        g_object_unref(cursor);
        delete search;
        return;
    }
    if (!row) {
        g_object_unref(cursor);
        search->owner->deliver(search);
        return;
    }
    const QString path = QUrl::fromEncoded(tracker_sparql_cursor_get_string(cursor, 0, nullptr)).toLocalFile();
    if (!path.isEmpty())
        search->paths.append(path);
    tracker_sparql_cursor_next_async(cursor, search->cancellable, advanced, search);
}

void TrackerFileSearch::deliver(Search *search)
{
    m_search = nullptr;
    const auto finished = std::move(search->finished);
    const QStringList paths = std::move(search->paths);
    delete search;
    if (finished)
        finished(paths);
}

} // namespace tessary

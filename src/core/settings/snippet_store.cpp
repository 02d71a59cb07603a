#include "core/settings/snippet_store.h"

#include "core/app/data_directory.h"
#include "core/json/strict_json.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcSnippets, "tessary.snippets")

namespace tessary {

namespace {

std::optional<QList<Snippet>> decode(const QByteArray &bytes)
{
    const auto array = StrictJson::parseArray(bytes);
    if (!array)
        return std::nullopt;
    QList<Snippet> snippets;
    for (const QJsonValue &value : *array) {
        auto snippet = Snippet::fromJson(value);
        if (!snippet)
            return std::nullopt;
        snippets.append(std::move(*snippet));
    }
    return snippets;
}

} // namespace

SnippetStore::SnippetStore(const QString &directory, QObject *parent)
    : QObject(parent)
    , m_url(QDir(directory).filePath(QLatin1String(fileName)))
{
    DataDirectory::ensurePrivate(directory);
    QFile file(m_url);
    std::optional<QList<Snippet>> stored;
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray bytes = file.readAll();
        stored = decode(bytes);
        if (!stored) {
            // The defaults replace the file at the next save: keep the user's snippets.
            const auto kept = DataDirectory::keepUnreadableCopy(m_url, bytes);
            qCWarning(lcSnippets).noquote() << "cannot decode" << m_url << "; using the default snippets"
                                            << (kept ? QStringLiteral("and keeping the old file as ") + *kept
                                                     : QStringLiteral("and the old file could not be kept"));
        }
    }
    m_snippets = stored ? std::move(*stored) : Snippet::defaults();
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(saveDelay);
    connect(&m_saveTimer, &QTimer::timeout, this, &SnippetStore::save);
}

SnippetStore::~SnippetStore()
{
    if (m_saveTimer.isActive())
        save();
}

void SnippetStore::setSnippets(const QList<Snippet> &snippets)
{
    Q_EMIT aboutToChange();
    m_snippets = snippets;
    if (!m_saveTimer.isActive())
        m_saveTimer.start();
    Q_EMIT changed();
}

void SnippetStore::save()
{
    m_saveTimer.stop();
    QJsonArray array;
    for (const Snippet &snippet : m_snippets)
        array.append(snippet.toJson());
    m_files.write(m_url, StrictJson::compact(array));
}

void SnippetStore::waitForSaved()
{
    if (m_saveTimer.isActive())
        save();
    m_files.waitForIdle();
}

} // namespace tessary

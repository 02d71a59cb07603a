#include "core/settings/snippet_store.h"

#include "core/json/strict_json.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QSaveFile>

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
    QDir().mkpath(directory);
    QFile file(m_url);
    std::optional<QList<Snippet>> stored;
    if (file.open(QIODevice::ReadOnly))
        stored = decode(file.readAll());
    m_snippets = stored ? std::move(*stored) : Snippet::defaults();
}

void SnippetStore::setSnippets(const QList<Snippet> &snippets)
{
    Q_EMIT aboutToChange();
    m_snippets = snippets;
    save();
    Q_EMIT changed();
}

void SnippetStore::save() const
{
    QJsonArray array;
    for (const Snippet &snippet : m_snippets)
        array.append(snippet.toJson());
    QSaveFile file(m_url);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(StrictJson::compact(array));
        file.commit();
    }
}

} // namespace tessary

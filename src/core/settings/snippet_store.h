#pragma once

#include "core/settings/snippet.h"

#include <QList>
#include <QObject>
#include <QString>

namespace tessary {

// The user's snippets, in order, kept in "snippets.json" in a directory fixed
// at construction. Every assignment notifies and then rewrites the file
// atomically; write errors are ignored and the list stays as assigned.
// Main thread only.
class SnippetStore : public QObject {
    Q_OBJECT

public:
    static constexpr const char *fileName = "snippets.json";

    // Creates `directory` if needed and loads the file; a missing, unreadable
    // or undecodable file gives the default snippets. Writes nothing.
    explicit SnippetStore(const QString &directory, QObject *parent = nullptr);

    const QList<Snippet> &snippets() const { return m_snippets; }
    void setSnippets(const QList<Snippet> &snippets);

    // Path of the snippets file.
    const QString &url() const { return m_url; }

Q_SIGNALS:
    void aboutToChange();
    void changed();

private:
    void save() const;

    QString m_url;
    QList<Snippet> m_snippets;
};

} // namespace tessary

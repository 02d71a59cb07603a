#pragma once

#include "core/clipboard/background_file_writer.h"
#include "core/settings/snippet.h"

#include <QList>
#include <QObject>
#include <QString>

namespace tessary {

// The user's snippets, in order, kept in "snippets.json" in a directory fixed
// at construction. Every assignment notifies and then rewrites the file
// atomically in the background, private to the user; write errors are
// logged and the list stays as assigned. Main thread only.
class SnippetStore : public QObject {
    Q_OBJECT

public:
    static constexpr const char *fileName = "snippets.json";

    // Creates `directory` if needed and loads the file; a missing, unreadable
    // or undecodable file gives the default snippets. An undecodable file is
    // kept beside it (DataDirectory::keepUnreadableCopy); nothing else is written.
    explicit SnippetStore(const QString &directory, QObject *parent = nullptr);

    const QList<Snippet> &snippets() const { return m_snippets; }
    void setSnippets(const QList<Snippet> &snippets);

    // Path of the snippets file.
    const QString &url() const { return m_url; }
    // Returns once the file holds the last assigned list (or its write failed).
    void waitForSaved();

Q_SIGNALS:
    void aboutToChange();
    void changed();

private:
    void save();

    QString m_url;
    QList<Snippet> m_snippets;
    BackgroundFileWriter m_files;
};

} // namespace tessary

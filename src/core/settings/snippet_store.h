#pragma once

#include "core/clipboard/background_file_writer.h"
#include "core/settings/snippet.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace tessary {

// The user's snippets, in order, kept in "snippets.json" in a directory fixed
// at construction. Every assignment notifies at once; the file is rewritten
// atomically in the background, private to the user, at most once per
// saveDelay (typing in the editor assigns per keystroke), and at destruction
// if an assignment is still waiting. Write errors are logged and the list
// stays as assigned. Main thread only.
class SnippetStore : public QObject {
    Q_OBJECT

public:
    static constexpr const char *fileName = "snippets.json";
    static constexpr std::chrono::milliseconds saveDelay{500};

    // Creates `directory` if needed and loads the file; a missing, unreadable
    // or undecodable file gives the default snippets. An undecodable file is
    // kept beside it (DataDirectory::keepUnreadableCopy); nothing else is written.
    explicit SnippetStore(const QString &directory, QObject *parent = nullptr);
    ~SnippetStore() override;

    const QList<Snippet> &snippets() const { return m_snippets; }
    void setSnippets(const QList<Snippet> &snippets);

    // Path of the snippets file.
    const QString &url() const { return m_url; }
    // Returns once the file holds the last assigned list (or its write failed),
    // writing it now if it was waiting for saveDelay.
    void waitForSaved();

Q_SIGNALS:
    void aboutToChange();
    void changed();

private:
    void save();

    QString m_url;
    QList<Snippet> m_snippets;
    BackgroundFileWriter m_files;
    QTimer m_saveTimer;
};

} // namespace tessary

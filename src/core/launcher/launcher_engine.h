#pragma once

#include "core/launcher/app_entry.h"
#include "core/launcher/launcher_actions.h"
#include "core/launcher/launcher_result.h"
#include "core/launcher/launcher_source.h"
#include "core/launcher/system_command.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>

namespace tessary {

class AppIndex;
class AppSettings;
class ClipboardStore;
class FileSearcher;
class Pasteboard;
class ProcessLauncher;
class SnippetStore;
class UsageTracker;

// Turns launcher text into ranked rows. Scores fall into bands: calculation
// 5000, web keyword 4000, clipboard 3000 and below, snippet keyword 2500,
// fuzzy matches up to 1160 with the usage bonus, files -0.5 and the web
// fallback -1. Everything a row does goes through `actions`. Main thread only;
// the stores and services must outlive the engine.
class LauncherEngine : public QObject, public LauncherSource {
    Q_OBJECT

public:
    struct Sources {
        AppSettings &settings;
        ClipboardStore &clipboard;
        SnippetStore &snippets;
        AppIndex &index;
        UsageTracker &usage;
        FileSearcher &files;
        // Runs system commands.
        ProcessLauncher &processes;
        // Read for the clipboard text of snippet placeholders.
        Pasteboard &pasteboard;
        // This platform's system commands, in tie-break order.
        QList<SystemCommand> commands = {};
    };

    static constexpr int maxRows = 8;
    static constexpr int maxFrequentApps = 6;
    static constexpr int maxFileRows = 8;
    static constexpr int maxMergedFileRows = 5;

    explicit LauncherEngine(Sources sources, QObject *parent = nullptr);

    // Replaceable at any time; rows built earlier keep the record they captured,
    // except the primary actions of application, system and snippet rows,
    // which use the engine's record when they run.
    LauncherActions actions;

    // At most 8 ranked rows plus, last, a web-search fallback; an empty or
    // blank query gives frequentApps().
    QList<LauncherResult> quickResults(const QString &query) override;
    // Up to 6 most used applications that are still installed.
    QList<LauncherResult> frequentApps();
    // File rows for `query`, delivered once, later, on the main thread (at once
    // and empty when files are off, the query is under two characters or is a
    // calculation). A newer call cancels the previous one's delivery.
    void fileResults(const QString &query, std::function<void(const QList<LauncherResult> &rows)> completion) override;

    // `rows` with its file rows replaced by the first five of `fileRows`, placed
    // just before the web fallback (or last); nothing is re-sorted.
    static QList<LauncherResult> mergeFileRows(QList<LauncherResult> rows, const QList<LauncherResult> &fileRows);

private:
    // "app-" + path of each indexed application, in index order.
    const QStringList &appIds();
    void addCalculation(QList<LauncherResult> &rows, const QString &trimmed) const;
    void addClipboard(QList<LauncherResult> &rows, const QString &trimmed, const QString &lower) const;
    void addWebKeywords(QList<LauncherResult> &rows, const QString &trimmed, const QString &lower) const;
    void addApps(QList<LauncherResult> &rows, const QString &trimmed);
    void addSystemCommands(QList<LauncherResult> &rows, const QString &trimmed);
    void addSnippets(QList<LauncherResult> &rows, const QString &trimmed, const QString &lower);
    void appendFallback(QList<LauncherResult> &rows, const QString &trimmed) const;
    LauncherResult appRow(const QString &id, const QString &name, const QUrl &url);
    LauncherResult fileRow(const QUrl &url) const;
    int usageBonus(const QString &id) const;

    Sources m_sources;
    QStringList m_appIds;
    // The index's list that m_appIds was made from, shared so that its identity stays unique.
    QList<AppEntry> m_appIdsSource;
};

} // namespace tessary

#include "core/launcher/launcher_engine.h"

#include "core/clipboard/clipboard_store.h"
#include "core/json/strict_json.h"
#include "core/launcher/app_index.h"
#include "core/launcher/calculator.h"
#include "core/launcher/file_searcher.h"
#include "core/launcher/fuzzy.h"
#include "core/launcher/unicode_text.h"
#include "core/launcher/usage_tracker.h"
#include "core/platform/pasteboard.h"
#include "core/settings/app_settings.h"
#include "core/settings/snippet_store.h"

#include <QFileInfo>
#include <QPointer>

#include <algorithm>
#include <optional>

namespace tessary {

namespace {

constexpr double calculationScore = 5000;
constexpr double webKeywordScore = 4000;
constexpr double clipboardScore = 3000;
constexpr double snippetKeywordScore = 2500;
constexpr double systemPenalty = 20;
// A generic name or keyword that matches exactly ranks with a name's initials.
constexpr double otherNamePenalty = 300;
constexpr double usageBonusPerUse = 8;
constexpr int usageBonusMaxUses = 20;
constexpr double fileScore = -0.5;
constexpr double fallbackScore = -1;
constexpr int snippetPreviewLength = 60;

// The key of the secondary action as the platform's users name it.
QString secondaryKey()
{
#ifdef Q_OS_MACOS
    return QStringLiteral("⌘↩ ");
#else
    return QStringLiteral("Ctrl+↩ ");
#endif
}
QString openHint() { return QStringLiteral("↩ Open"); }
QString revealHint() { return secondaryKey() + QStringLiteral("Reveal"); }
QString searchSymbol() { return QStringLiteral("magnifyingglass"); }

double scoreOrMinusOne(const QString &query, const QString &candidate)
{
    return Fuzzy::score(query, candidate).value_or(-1);
}

// The query-allowed URL characters less "&+=#?/": letters, digits and !$'()*,-.:;@_~ stay.
QString percentEncoded(const QString &terms)
{
    return QString::fromLatin1(QUrl::toPercentEncoding(terms, QByteArrayLiteral("!$'()*,:;@")));
}

std::optional<QUrl> searchUrl(const WebSearch &search, const QString &terms)
{
    QString text = search.url;
    text.replace(QLatin1String("{query}"), percentEncoded(terms));
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty())
        return std::nullopt;
    return url;
}

LauncherResult webRow(const QString &id, const WebSearch &search, const QString &terms, const QUrl &url, double score,
    const LauncherActions &actions)
{
    return LauncherResult{id, LauncherResult::Kind::web,
        QStringLiteral("Search ") + search.name + QStringLiteral(" for “") + terms + QStringLiteral("”"), url.host(),
        std::nullopt, searchSymbol(), score, QStringLiteral("↩ Search"), [open = actions.open, url] { open(url); }, {},
        std::nullopt};
}

QString clipSymbol(ClipItem::Kind kind)
{
    switch (kind) {
    case ClipItem::Kind::text:
        return QStringLiteral("text.alignleft");
    case ClipItem::Kind::image:
        return QStringLiteral("photo");
    case ClipItem::Kind::files:
        return QStringLiteral("doc");
    }
    return {};
}

QString firstCharacters(const QString &text, int count)
{
    const std::vector<QStringView> characters = UnicodeText::graphemes(text);
    if (std::ssize(characters) <= count)
        return text;
    const QStringView last = characters[count - 1];
    return text.left(last.data() + last.size() - text.data());
}

} // namespace

LauncherEngine::LauncherEngine(Sources sources, QObject *parent)
    : QObject(parent)
    , m_sources(std::move(sources))
{
}

const QStringList &LauncherEngine::appIds()
{
    const QList<AppEntry> &apps = m_sources.index.apps();
    if (!m_appIdsSource.isSharedWith(apps) || m_appIds.size() != apps.size()) {
        m_appIds.clear();
        for (const AppEntry &app : apps)
            m_appIds.append(QStringLiteral("app-") + app.path());
        m_appIdsSource = apps;
    }
    return m_appIds;
}

QList<LauncherResult> LauncherEngine::quickResults(const QString &query)
{
    const QString trimmed = UnicodeText::trimmedHorizontal(query).toString();
    if (trimmed.isEmpty())
        return frequentApps();
    const QString lower = trimmed.toLower();

    QList<LauncherResult> rows;
    addCalculation(rows, trimmed);
    addClipboard(rows, trimmed, lower);
    addWebKeywords(rows, trimmed, lower);
    addApps(rows, trimmed);
    if (m_sources.settings.data().launcherSystem)
        addSystemCommands(rows, trimmed);
    addSnippets(rows, trimmed, lower);

    std::stable_sort(
        rows.begin(), rows.end(), [](const LauncherResult &a, const LauncherResult &b) { return a.score > b.score; });
    if (rows.size() > maxRows)
        rows.resize(maxRows);
    appendFallback(rows, trimmed);
    return rows;
}

void LauncherEngine::addCalculation(QList<LauncherResult> &rows, const QString &trimmed) const
{
    const std::optional<double> value = Calculator::forLauncher(trimmed);
    if (!value)
        return;
    const QString plain = Calculator::format(*value, false);
    rows.append(LauncherResult{QStringLiteral("calc"), LauncherResult::Kind::calc, Calculator::format(*value, true),
        trimmed + QStringLiteral(" ="), std::nullopt, QStringLiteral("equal.circle"), calculationScore,
        QStringLiteral("↩ Copy"), [copy = actions.copy, plain] { copy(plain); },
        [paste = actions.paste, plain] { paste(plain); }, secondaryKey() + QStringLiteral("Paste")});
}

void LauncherEngine::addClipboard(QList<LauncherResult> &rows, const QString &trimmed, const QString &lower) const
{
    for (const QLatin1String prefix : {QLatin1String("cb"), QLatin1String("clip")}) {
        if (lower != prefix && !lower.startsWith(prefix + QLatin1Char(' ')))
            continue;
        const QString rest = UnicodeText::trimmedHorizontal(QStringView(trimmed).mid(prefix.size())).toString();
        const QList<ClipItem> items = m_sources.clipboard.search(rest);
        for (int i = 0; i < std::min<qsizetype>(items.size(), maxRows); ++i) {
            const ClipItem &item = items.at(i);
            const QString title = item.title();
            rows.append(LauncherResult{QStringLiteral("clip-") + StrictJson::uuidText(item.id),
                LauncherResult::Kind::clipboard, title.isEmpty() ? QStringLiteral("(empty)") : title,
                QStringLiteral("Clipboard · ") + item.sourceApp.value_or(QStringLiteral("unknown app")), std::nullopt,
                clipSymbol(item.kind), clipboardScore - i, QStringLiteral("↩ Paste"),
                [pasteClip = actions.pasteClip, item] { pasteClip(item); }, {}, std::nullopt});
        }
    }
}

void LauncherEngine::addWebKeywords(QList<LauncherResult> &rows, const QString &trimmed, const QString &lower) const
{
    for (const WebSearch &search : m_sources.settings.data().webSearches) {
        if (!lower.startsWith(search.keyword.toLower() + QLatin1Char(' ')))
            continue;
        const QString terms
            = UnicodeText::trimmedHorizontal(QStringView(trimmed).mid(search.keyword.size())).toString();
        if (terms.isEmpty())
            continue;
        if (const std::optional<QUrl> url = searchUrl(search, terms))
            rows.append(webRow(QStringLiteral("web-") + search.keyword, search, terms, *url, webKeywordScore, actions));
    }
}

void LauncherEngine::addApps(QList<LauncherResult> &rows, const QString &trimmed)
{
    // Only the best few applications can survive the cut, so rows are built for
    // those alone; ties keep index order, as the final stable sort expects.
    struct Match {
        double score;
        qsizetype position;
    };
    const QList<AppEntry> &apps = m_sources.index.apps();
    const QStringList &ids = appIds();
    std::vector<Match> matches;
    for (qsizetype i = 0; i < apps.size(); ++i) {
        const AppEntry &app = apps.at(i);
        double best = std::max(scoreOrMinusOne(trimmed, app.name), scoreOrMinusOne(trimmed, app.fileName));
        for (const QString &other : app.otherNames) {
            if (const std::optional<double> score = Fuzzy::score(trimmed, other))
                best = std::max(best, *score - otherNamePenalty);
        }
        if (best >= 0)
            matches.push_back({best + usageBonus(ids.at(i)), i});
    }
    const auto kept = matches.begin() + std::min<std::ptrdiff_t>(maxRows, std::ssize(matches));
    std::partial_sort(matches.begin(), kept, matches.end(), [](const Match &a, const Match &b) {
        return a.score != b.score ? a.score > b.score : a.position < b.position;
    });
    std::sort(matches.begin(), kept, [](const Match &a, const Match &b) { return a.position < b.position; });
    for (auto match = matches.begin(); match != kept; ++match) {
        const AppEntry &app = apps.at(match->position);
        LauncherResult row = appRow(ids.at(match->position), app.name, app.url);
        row.subtitle = QFileInfo(app.path()).path();
        row.score = match->score;
        rows.append(std::move(row));
    }
}

void LauncherEngine::addSystemCommands(QList<LauncherResult> &rows, const QString &trimmed)
{
    for (const SystemCommand &command : m_sources.commands) {
        if (command.offered && !command.offered())
            continue;
        std::optional<double> best;
        for (const QString &candidate : QStringList{command.title} + command.keywords) {
            if (const std::optional<double> score = Fuzzy::score(trimmed, candidate))
                best = std::max(best.value_or(*score), *score);
        }
        if (!best)
            continue;
        const QString id = QStringLiteral("sys-") + command.id;
        auto run = [engine = QPointer<LauncherEngine>(this), id, command] {
            if (!engine)
                return;
            if (command.confirm && !engine->actions.confirm(*command.confirm))
                return;
            engine->m_sources.usage.record(id);
            command.run(engine->m_sources.processes);
        };
        rows.append(LauncherResult{id, LauncherResult::Kind::system, command.title, QStringLiteral("System command"),
            std::nullopt, command.symbol, *best - systemPenalty + usageBonus(id), QStringLiteral("↩ Run"),
            std::move(run), {}, std::nullopt});
    }
}

void LauncherEngine::addSnippets(QList<LauncherResult> &rows, const QString &trimmed, const QString &lower)
{
    for (const Snippet &snippet : m_sources.snippets.snippets()) {
        double score = scoreOrMinusOne(trimmed, snippet.name);
        if (!snippet.keyword.isEmpty()) {
            if (snippet.keyword.toLower() == lower)
                score = snippetKeywordScore;
            else
                score = std::max(score, scoreOrMinusOne(trimmed, snippet.keyword));
        }
        if (score < 0)
            continue;
        QString preview = snippet.text;
        preview.replace(QLatin1Char('\n'), QLatin1Char(' '));
        auto paste = [engine = QPointer<LauncherEngine>(this), snippet] {
            if (!engine)
                return;
            const auto pasteWith = [engine, snippet](const std::optional<QString> &clipboard) {
                if (engine)
                    engine->actions.paste(
                        snippet.expanded(clipboard.value_or(QString()), QDateTime::currentDateTime(), QLocale()));
            };
            // The clipboard's owner is asked only when the text needs it.
            if (snippet.text.contains(QLatin1String("{clipboard}")))
                engine->m_sources.pasteboard.readString(pasteWith);
            else
                pasteWith(std::nullopt);
        };
        rows.append(LauncherResult{QStringLiteral("snip-") + StrictJson::uuidText(snippet.id),
            LauncherResult::Kind::snippet, snippet.name,
            QStringLiteral("Snippet · ") + firstCharacters(preview, snippetPreviewLength), std::nullopt,
            QStringLiteral("text.append"), score, QStringLiteral("↩ Paste"), std::move(paste), {}, std::nullopt});
    }
}

void LauncherEngine::appendFallback(QList<LauncherResult> &rows, const QString &trimmed) const
{
    const QList<WebSearch> &searches = m_sources.settings.data().webSearches;
    if (searches.isEmpty())
        return;
    if (const std::optional<QUrl> url = searchUrl(searches.first(), trimmed))
        rows.append(webRow(QStringLiteral("web-fallback"), searches.first(), trimmed, *url, fallbackScore, actions));
}

QList<LauncherResult> LauncherEngine::frequentApps()
{
    const QStringList &ids = appIds();
    QHash<QString, const AppEntry *> apps;
    for (qsizetype i = 0; i < ids.size(); ++i)
        apps.insert(ids.at(i), &m_sources.index.apps().at(i));

    QList<LauncherResult> rows;
    for (const QString &id : m_sources.usage.topIDs()) {
        if (rows.size() >= maxFrequentApps)
            break;
        const AppEntry *app = apps.value(id);
        if (!app)
            continue;
        LauncherResult row = appRow(id, app->name, app->url);
        row.subtitle = QStringLiteral("Frequently used");
        rows.append(std::move(row));
    }
    return rows;
}

LauncherResult LauncherEngine::appRow(const QString &id, const QString &name, const QUrl &url)
{
    auto open = [engine = QPointer<LauncherEngine>(this), id, url] {
        if (!engine)
            return;
        engine->m_sources.usage.record(id);
        engine->actions.open(url);
    };
    return LauncherResult{id, LauncherResult::Kind::app, name, QString(), url.toLocalFile(), std::nullopt, 0,
        openHint(), std::move(open), [reveal = actions.reveal, url] { reveal(url); }, revealHint()};
}

void LauncherEngine::fileResults(
    const QString &query, std::function<void(const QList<LauncherResult> &rows)> completion)
{
    const QString trimmed = UnicodeText::trimmedHorizontal(query).toString();
    if (!m_sources.settings.data().launcherFiles || UnicodeText::graphemes(trimmed).size() < 2
        || Calculator::forLauncher(trimmed)) {
        m_sources.files.cancel();
        completion({});
        return;
    }
    m_sources.files.search(trimmed, maxFileRows,
        [engine = QPointer<LauncherEngine>(this), completion = std::move(completion)](const QList<QUrl> &urls) {
            if (!engine)
                return;
            QList<LauncherResult> rows;
            for (const QUrl &url : urls)
                rows.append(engine->fileRow(url));
            completion(rows);
        });
}

LauncherResult LauncherEngine::fileRow(const QUrl &url) const
{
    const QString path = url.toLocalFile();
    const QFileInfo info(path);
    const QString home = m_sources.files.home();
    QString folder = info.path();
    if (folder == home)
        folder = QStringLiteral("~");
    else if (folder.startsWith(home + QLatin1Char('/')))
        folder = QLatin1Char('~') + folder.mid(home.size());
    return LauncherResult{QStringLiteral("file-") + path, LauncherResult::Kind::file, info.fileName(), folder, path,
        std::nullopt, fileScore, openHint(), [open = actions.open, url] { open(url); },
        [reveal = actions.reveal, url] { reveal(url); }, revealHint()};
}

QList<LauncherResult> LauncherEngine::mergeFileRows(QList<LauncherResult> rows, const QList<LauncherResult> &fileRows)
{
    rows.removeIf([](const LauncherResult &row) { return row.kind == LauncherResult::Kind::file; });
    const auto fallback = std::find_if(
        rows.begin(), rows.end(), [](const LauncherResult &row) { return row.id == QLatin1String("web-fallback"); });
    const qsizetype at = fallback - rows.begin();
    const qsizetype count = std::min<qsizetype>(fileRows.size(), maxMergedFileRows);
    for (qsizetype i = 0; i < count; ++i)
        rows.insert(at + i, fileRows.at(i));
    return rows;
}

int LauncherEngine::usageBonus(const QString &id) const
{
    return int(usageBonusPerUse) * std::min(m_sources.usage.count(id), usageBonusMaxUses);
}

} // namespace tessary

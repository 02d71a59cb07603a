#include "app/selftest/checks/data_files_check.h"

#include "core/clipboard/clip_item.h"
#include "core/json/strict_json.h"
#include "core/settings/snippet.h"
#include "core/settings/snippet_store.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace tessary {

namespace {

constexpr const char *historyName = "clipboard.json";
constexpr const char *imagesName = "images";

std::optional<mode_t> modeOf(const QString &path)
{
    struct stat info { };
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return info.st_mode & 07777;
}

// "1 image", "3 images".
QString counted(qsizetype count, const char *one, const char *many)
{
    return QString::number(count) + QLatin1Char(' ') + QLatin1String(count == 1 ? one : many);
}

QString octal(mode_t mode) { return QStringLiteral("%1").arg(uint(mode), 4, 8, QLatin1Char('0')); }

std::optional<QByteArray> contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

std::optional<qsizetype> snippetCount(const QByteArray &bytes)
{
    const auto array = StrictJson::parseArray(bytes);
    if (!array)
        return std::nullopt;
    for (const QJsonValue &value : *array) {
        if (!Snippet::fromJson(value))
            return std::nullopt;
    }
    return array->size();
}

// Findings about one folder or file; problems go to `problems`.
struct Inspection {
    QStringList notes;
    QStringList problems;
    QStringList remedies;

    bool permissions(const QString &path, mode_t expected)
    {
        const std::optional<mode_t> mode = modeOf(path);
        if (!mode)
            return false;
        if (*mode != expected) {
            problems.append(QStringLiteral("%1 is %2, not %3").arg(path, octal(*mode), octal(expected)));
            remedies.append(QStringLiteral("chmod %1 %2").arg(octal(expected).mid(1), path));
        }
        return true;
    }
};

} // namespace

DataFilesCheck::DataFilesCheck(const SelfCheckContext &context)
    : SelfCheck(QStringLiteral("Data folder"))
    , m_context(context)
{
}

void DataFilesCheck::run(Done done)
{
    const QDir folder(m_context.dataDirectory);
    Inspection inspection;
    if (!inspection.permissions(folder.path(), 0700)) {
        done(CheckResult::passed(
            QStringLiteral("%1 does not exist yet; it is created at the first copy.").arg(folder.path())));
        return;
    }

    const QString history = folder.filePath(QLatin1String(historyName));
    if (inspection.permissions(history, 0600)) {
        const std::optional<QByteArray> bytes = contents(history);
        const std::optional<QList<ClipItem>> items = bytes ? ClipItem::listFromJson(*bytes) : std::nullopt;
        if (items) {
            inspection.notes.append(
                QLatin1String(historyName) + QLatin1Char(' ') + counted(items->size(), "entry", "entries"));
        } else {
            inspection.problems.append(QStringLiteral("%1 cannot be read as a clipboard history: Tessary starts with "
                                                      "an empty one and keeps this file beside it as %2.unreadable-…")
                                           .arg(history, QLatin1String(historyName)));
            inspection.remedies.append(
                QStringLiteral("repair or delete %1; the kept copy stays for recovering entries").arg(history));
        }
    }
    const QString images = folder.filePath(QLatin1String(imagesName));
    if (inspection.permissions(images, 0700)) {
        const QFileInfoList files = QDir(images).entryInfoList(QDir::Files | QDir::Hidden);
        for (const QFileInfo &file : files)
            inspection.permissions(file.filePath(), 0600);
        inspection.notes.append(counted(files.size(), "image", "images"));
    }
    const QString snippets = folder.filePath(QLatin1String(SnippetStore::fileName));
    if (QFileInfo::exists(snippets)) {
        const std::optional<QByteArray> bytes = contents(snippets);
        if (const std::optional<qsizetype> count = bytes ? snippetCount(*bytes) : std::nullopt) {
            inspection.notes.append(
                QLatin1String(SnippetStore::fileName) + QLatin1Char(' ') + counted(*count, "snippet", "snippets"));
        } else {
            inspection.problems.append(QStringLiteral("%1 cannot be read as snippets: Tessary offers the default "
                                                      "ones and keeps this file beside it as %2.unreadable-…")
                                           .arg(snippets, QLatin1String(SnippetStore::fileName)));
            inspection.remedies.append(
                QStringLiteral("repair or delete %1; the kept copy stays for recovering snippets").arg(snippets));
        }
    }
    if (!inspection.problems.isEmpty()) {
        QString remedy = inspection.remedies.join(QStringLiteral("; ")) + QLatin1Char('.');
        remedy[0] = remedy.at(0).toUpper();
        done(CheckResult::failure(inspection.problems.join(QStringLiteral("; ")) + QLatin1Char('.'), remedy));
        return;
    }
    const QString notes
        = inspection.notes.isEmpty() ? QString() : QStringLiteral(": ") + inspection.notes.join(QStringLiteral(", "));
    done(CheckResult::passed(QStringLiteral("%1 (private)%2.").arg(folder.path(), notes)));
}

} // namespace tessary

#include "platform/x11/launcher/baloo_file_search.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

namespace tessary {

namespace {

constexpr int deadlineMs = 5000;
constexpr int maxResults = 200;

} // namespace

BalooFileSearch::BalooFileSearch(QString home, QString program, QObject *parent)
    : QObject(parent)
    , m_home(std::move(home))
    , m_program(std::move(program))
{
}

BalooFileSearch::~BalooFileSearch() { stop(); }

QString BalooFileSearch::searchProgram()
{
    // KDE Frameworks 6 renamed the client; Frameworks 5 ships the plain name.
    const QString current = QStandardPaths::findExecutable(QStringLiteral("baloosearch6"));
    return current.isEmpty() ? QStringLiteral("baloosearch") : current;
}

QString BalooFileSearch::nameQuery(const QString &text)
{
    // The index splits names into words at everything but letters, digits and
    // their accents, and matches word prefixes; a quoted value keeps its
    // words literal.
    QStringList words;
    QString word;
    for (const char32_t c : text.toUcs4()) {
        if (QChar::isLetterOrNumber(c) || QChar::isMark(c)) {
            word.append(QChar::fromUcs4(c));
        } else if (!word.isEmpty()) {
            words.append(std::exchange(word, QString()));
        }
    }
    if (!word.isEmpty())
        words.append(word);
    if (words.isEmpty())
        return {};
    return QStringLiteral("filename:\"%1\"").arg(words.join(QLatin1Char(' ')));
}

void BalooFileSearch::start(const QString &text, std::function<void(QStringList paths)> finished)
{
    stop();
    m_search = new QObject(this);
    const QString query = nameQuery(text);
    if (query.isEmpty()) {
        QTimer::singleShot(0, m_search, [this, finished] { finish({}, finished); });
        return;
    }
    auto *process = new QProcess(m_search);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The client writes paths in its locale's encoding; this one reads UTF-8.
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    process->setProcessEnvironment(environment);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    connect(process, &QProcess::finished, m_search,
        [this, process, finished] { finish(process->readAllStandardOutput(), finished); });
    connect(process, &QProcess::errorOccurred, m_search, [this, finished](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish({}, finished);
    });
    QTimer::singleShot(deadlineMs, m_search, [process] { process->kill(); });
    process->start(m_program,
        {QStringLiteral("--limit"), QString::number(maxResults), QStringLiteral("--directory"), m_home, query});
}

void BalooFileSearch::stop()
{
    if (!m_search)
        return;
    // A killed client is reaped when it has gone, never waited for here.
    if (auto *process = m_search->findChild<QProcess *>()) {
        if (process->state() == QProcess::NotRunning) {
            delete process;
        } else {
            process->setParent(this);
            connect(process, &QProcess::finished, process, &QObject::deleteLater);
            process->kill();
        }
    }
    delete std::exchange(m_search, nullptr);
}

void BalooFileSearch::finish(const QByteArray &output, const std::function<void(QStringList)> &finished)
{
    // Called from the client's own signals: it goes once they have returned.
    std::exchange(m_search, nullptr)->deleteLater();
    QStringList paths;
    // Whole lines only: a client cut off at the deadline may stop mid-line.
    // The last line is the client's timing, not a path.
    const QList<QByteArray> lines = output.left(output.lastIndexOf('\n')).split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith('/'))
            paths.append(QString::fromUtf8(line));
    }
    finished(paths);
}

} // namespace tessary

// `tessary query` as a user runs it: the built binary, a fresh home folder, no display.
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <utility>

namespace {

struct Outcome {
    int exitCode = -1;
    QString out;
    QString err;
};

class QueryCommand : public ::testing::Test {
protected:
    Outcome query(const QStringList &arguments)
    {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("HOME"), m_home.path());
        for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS",
                 "XDG_STATE_HOME", "LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"})
            env.remove(QString::fromLatin1(name));
        if (!m_locale.isEmpty()) {
            env.insert(QStringLiteral("LANG"), m_locale);
            env.insert(QStringLiteral("LC_ALL"), m_locale);
        }
        QProcess process;
        process.setProcessEnvironment(env);
        process.start(QStringLiteral(TESSARY_BINARY), QStringList{QStringLiteral("query")} + arguments);
        EXPECT_TRUE(process.waitForFinished(30000));
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
    }

    QJsonArray rows(const QStringList &arguments)
    {
        const Outcome run = query(arguments + QStringList{QStringLiteral("--json")});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        return QJsonDocument::fromJson(run.out.toUtf8()).array();
    }

    void file(const QString &relative)
    {
        const QString path = m_home.filePath(relative);
        QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
        QFile(path).open(QIODevice::WriteOnly);
    }

    QTemporaryDir m_home;
    // The child's locale; the C locale when empty.
    QString m_locale;
};

TEST_F(QueryCommand, aCalculationIsTheFirstRow)
{
    const QJsonArray result = rows({QStringLiteral("12*7%")});
    ASSERT_FALSE(result.isEmpty());
    const QJsonObject first = result.first().toObject();
    EXPECT_EQ(first.value(QLatin1String("id")).toString(), QStringLiteral("calc"));
    EXPECT_EQ(first.value(QLatin1String("kind")).toString(), QStringLiteral("calc"));
    EXPECT_EQ(first.value(QLatin1String("title")).toString(), QStringLiteral("0.84"));
    EXPECT_EQ(first.value(QLatin1String("subtitle")).toString(), QStringLiteral("12*7% ="));
    EXPECT_EQ(first.value(QLatin1String("score")).toDouble(), 5000);
}

TEST_F(QueryCommand, calculationsReadTheSameInEveryLocale)
{
    m_locale = qEnvironmentVariable("TESSARY_TEST_LOCALE");
    if (m_locale.isEmpty())
        GTEST_SKIP() << "runs under the test locales";
    const std::pair<QString, QString> cases[] = {{QStringLiteral("2^64"), QStringLiteral("1.84467e+19")},
        {QStringLiteral("1234.5*2"), QStringLiteral("2,469")}, {QStringLiteral("1/8"), QStringLiteral("0.125")}};
    for (const auto &[text, title] : cases) {
        const QJsonArray result = rows({text});
        ASSERT_FALSE(result.isEmpty()) << text.toStdString();
        EXPECT_EQ(result.first().toObject().value(QLatin1String("title")).toString(), title) << text.toStdString();
    }
}

TEST_F(QueryCommand, textMatchingNothingEndsWithTheWebFallback)
{
    const Outcome plain = query({QStringLiteral("zzzqqq")});
    EXPECT_EQ(plain.exitCode, 0);
    EXPECT_EQ(plain.out, QStringLiteral("Search Google for “zzzqqq” — www.google.com\n"));

    const QJsonArray result = rows({QStringLiteral("zzzqqq")});
    ASSERT_FALSE(result.isEmpty());
    EXPECT_EQ(result.last().toObject().value(QLatin1String("id")).toString(), QStringLiteral("web-fallback"));
    EXPECT_EQ(result.last().toObject().value(QLatin1String("kind")).toString(), QStringLiteral("web"));
}

TEST_F(QueryCommand, findsTheInstalledTerminal)
{
    if (!QFile::exists(QStringLiteral("/usr/share/applications/debian-xterm.desktop")))
        GTEST_SKIP() << "no XTerm desktop entry on this machine";
    const Outcome plain = query({QStringLiteral("xterm")});
    EXPECT_TRUE(plain.out.startsWith(QStringLiteral("XTerm — /usr/share/applications\n"))) << plain.out.toStdString();

    const QJsonObject first = rows({QStringLiteral("xterm")}).first().toObject();
    EXPECT_EQ(first.value(QLatin1String("id")).toString(),
        QStringLiteral("app-/usr/share/applications/debian-xterm.desktop"));
    EXPECT_EQ(first.value(QLatin1String("kind")).toString(), QStringLiteral("app"));
}

TEST_F(QueryCommand, filesJoinBeforeTheFallbackWithoutTheNoise)
{
    file(QStringLiteral("Documents/quarterly-report.txt"));
    file(QStringLiteral(".cache/quarterly-report.tmp"));
    file(QStringLiteral("web/node_modules/quarterly-report/index.js"));

    const QJsonArray without = rows({QStringLiteral("quarterly")});
    ASSERT_EQ(without.size(), 1);

    const QJsonArray result = rows({QStringLiteral("quarterly"), QStringLiteral("--files")});
    ASSERT_EQ(result.size(), 2);
    const QJsonObject report = result.first().toObject();
    EXPECT_EQ(report.value(QLatin1String("id")).toString(),
        QStringLiteral("file-") + m_home.filePath(QStringLiteral("Documents/quarterly-report.txt")));
    EXPECT_EQ(report.value(QLatin1String("kind")).toString(), QStringLiteral("file"));
    EXPECT_EQ(report.value(QLatin1String("subtitle")).toString(), QStringLiteral("~/Documents"));
    EXPECT_EQ(result.last().toObject().value(QLatin1String("id")).toString(), QStringLiteral("web-fallback"));
}

TEST_F(QueryCommand, withoutTextItExplainsItsUsage)
{
    for (const QStringList &arguments : {QStringList{}, QStringList{QStringLiteral("--json")},
             QStringList{QStringLiteral("--bogus"), QStringLiteral("x")}}) {
        const Outcome run = query(arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.err, QStringLiteral("usage: tessary query TEXT [--json] [--files]\n"));
        EXPECT_TRUE(run.out.isEmpty());
    }
}

} // namespace

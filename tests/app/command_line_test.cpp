// The command line as parsed, without a display or an application object.
#include "app/command_line.h"

#include <gtest/gtest.h>

namespace {

using tessary::CommandLine::Invocation;
using tessary::CommandLine::Mode;

Invocation parse(const QStringList &arguments)
{
    return tessary::CommandLine::parse(QStringList{QStringLiteral("tessary")} + arguments);
}

struct Case {
    QStringList arguments;
    Mode mode;
    QStringList forwarded = {};
    QString text = {};
};

TEST(CommandLine, modesAndWhatTheyCarry)
{
    const Case cases[] = {
        {{}, Mode::tray},
        {{QStringLiteral("--show"), QStringLiteral("clipboard")}, Mode::tray,
            {QStringLiteral("--show"), QStringLiteral("clipboard")}},
        {{QStringLiteral("--show=launcher")}, Mode::tray, {QStringLiteral("--show"), QStringLiteral("launcher")}},
        // The query after the panel is one argument, however many words it came as.
        {{QStringLiteral("--show"), QStringLiteral("launcher"), QStringLiteral("2+2"), QStringLiteral("cats")},
            Mode::tray, {QStringLiteral("--show"), QStringLiteral("launcher"), QStringLiteral("2+2 cats")}},
        {{QStringLiteral("--show"), QStringLiteral("launcher"), QStringLiteral("--"), QStringLiteral("-5")}, Mode::tray,
            {QStringLiteral("--show"), QStringLiteral("launcher"), QStringLiteral("-5")}},
        {{QStringLiteral("--menu"), QStringLiteral("Quit Tessary")}, Mode::tray,
            {QStringLiteral("--menu"), QStringLiteral("Quit Tessary")}},
        {{QStringLiteral("--selftest")}, Mode::selftest},
        {{QStringLiteral("query"), QStringLiteral("--json"), QStringLiteral("--files"), QStringLiteral("a"),
             QStringLiteral("b")},
            Mode::query, {}, QStringLiteral("a b")},
        {{QStringLiteral("query"), QStringLiteral("--"), QStringLiteral("-5"), QStringLiteral("--json")}, Mode::query,
            {}, QStringLiteral("-5 --json")},
        {{QStringLiteral("query"), QStringLiteral("--show")}, Mode::error},
        {{QStringLiteral("-h")}, Mode::help},
        {{QStringLiteral("query"), QStringLiteral("--help")}, Mode::help},
        {{QStringLiteral("--version")}, Mode::version},
    };
    for (const Case &c : cases) {
        const Invocation invocation = parse(c.arguments);
        const std::string context = c.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(invocation.mode, c.mode) << context;
        EXPECT_EQ(invocation.forwarded, c.forwarded) << context;
        EXPECT_EQ(invocation.text, c.text) << context;
    }
}

TEST(CommandLine, jsonAndFilesBelongToTheirCommands)
{
    const Invocation selftest = parse({QStringLiteral("--selftest"), QStringLiteral("--json")});
    EXPECT_TRUE(selftest.json);
    const Invocation query = parse({QStringLiteral("query"), QStringLiteral("--files"), QStringLiteral("x")});
    EXPECT_FALSE(query.json);
    EXPECT_TRUE(query.files);
    EXPECT_EQ(parse({QStringLiteral("--json")}).mode, Mode::error);
}

TEST(CommandLine, mistakesAreOneLine)
{
    const std::pair<QStringList, QString> cases[] = {
        {{QStringLiteral("--bogus")}, QStringLiteral("tessary: Unknown option 'bogus'.")},
        {{QStringLiteral("query"), QStringLiteral("--bogus"), QStringLiteral("x")},
            QStringLiteral("tessary: Unknown option 'bogus'.")},
        {{QStringLiteral("--show")}, QStringLiteral("tessary: Missing value after '--show'.")},
        {{QStringLiteral("frobnicate")}, QStringLiteral("tessary: Unknown command 'frobnicate'.")},
        {{QStringLiteral("--selftest"), QStringLiteral("extra")},
            QStringLiteral("tessary: --selftest takes no arguments.")},
        {{QStringLiteral("query")}, QStringLiteral("usage: tessary query [--json] [--files] [--] TEXT…")},
        {{QStringLiteral("query"), QStringLiteral("--json")},
            QStringLiteral("usage: tessary query [--json] [--files] [--] TEXT…")},
    };
    for (const auto &[arguments, line] : cases) {
        const Invocation invocation = parse(arguments);
        EXPECT_EQ(invocation.mode, Mode::error) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(invocation.message, line);
    }
}

TEST(CommandLine, helpShowsEveryDocumentedOptionButNotTheHiddenOne)
{
    const QString help = parse({QStringLiteral("--help")}).message;
    for (const char *option : {"--show <PANEL>", "--selftest", "--json", "--files", "--version", "TEXT"})
        EXPECT_TRUE(help.contains(QLatin1String(option))) << option;
    EXPECT_FALSE(help.contains(QLatin1String("--menu")));
}

} // namespace

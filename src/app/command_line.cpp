#include "app/command_line.h"

#include <QCommandLineParser>

namespace tessary::CommandLine {

namespace {

constexpr QLatin1String help("help");
constexpr QLatin1String versionName("version");
constexpr QLatin1String show("show");
constexpr QLatin1String menu("menu");
constexpr QLatin1String selftest("selftest");
constexpr QLatin1String json("json");
constexpr QLatin1String files("files");
constexpr QLatin1String query("query");

QCommandLineOption helpOption() { return {{QStringLiteral("h"), help}, QStringLiteral("Prints this help and exits.")}; }

Invocation failure(const QString &line)
{
    Invocation invocation;
    invocation.mode = Mode::error;
    invocation.message = line;
    return invocation;
}

Invocation failedParse(const QCommandLineParser &parser)
{
    return failure(QStringLiteral("tessary: ") + parser.errorText());
}

Invocation text(Mode mode, const QString &message)
{
    Invocation invocation;
    invocation.mode = mode;
    invocation.message = message;
    return invocation;
}

Invocation parseQuery(const Command &command, const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.addOptions(command.options);
    if (!parser.parse(QStringList{QStringLiteral("tessary query")} + arguments))
        return failedParse(parser);
    if (parser.isSet(help))
        return text(Mode::help, helpText());
    Invocation invocation;
    invocation.mode = Mode::query;
    invocation.json = parser.isSet(json);
    invocation.files = parser.isSet(files);
    invocation.text = parser.positionalArguments().join(QLatin1Char(' '));
    if (invocation.text.isEmpty())
        return failure(QStringLiteral("usage: ") + command.synopsis);
    return invocation;
}

QString optionNames(const QCommandLineOption &option)
{
    QStringList names;
    for (const QString &name : option.names())
        names.append((name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name);
    QString joined = names.join(QStringLiteral(", "));
    if (!option.valueName().isEmpty())
        joined += QStringLiteral(" <") + option.valueName() + QLatin1Char('>');
    return joined;
}

// `text` broken at spaces into lines of at most `width` characters, every
// line after the first indented by `indent` spaces.
QString wrapped(const QString &text, qsizetype indent, qsizetype width = 79)
{
    QString out;
    qsizetype column = indent;
    for (const QString &word : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        if (column > indent && column + 1 + word.size() > width) {
            out += QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
            column = indent;
        } else if (column > indent) {
            out += QLatin1Char(' ');
            ++column;
        }
        out += word;
        column += word.size();
    }
    return out;
}

// An option or argument name in a 26-column margin, then its wrapped description.
QString helpRow(const QString &name, const QString &description)
{
    constexpr qsizetype margin = 26;
    QString row = QStringLiteral("  ") + name;
    row = row.size() < margin ? row.leftJustified(margin) : row + QLatin1Char('\n') + QString(margin, QLatin1Char(' '));
    return row + wrapped(description, margin) + QLatin1Char('\n');
}

} // namespace

QList<Command> commands()
{
    QCommandLineOption menuOption(
        menu, QStringLiteral("Chooses the tray menu item titled TITLE."), QStringLiteral("TITLE"));
    // For driving a running instance without a tray (tests); not part of the documented interface.
    menuOption.setFlags(QCommandLineOption::HiddenFromHelp);
    Command tray{QStringLiteral("tessary [--show PANEL [QUERY]] | --selftest [--json] | --help | --version"),
        QStringLiteral("Starts Tessary in the tray: window snapping, the launcher, the clipboard history and "
                       "snippets under global shortcuts. A second start hands its options to the running one "
                       "and exits."),
        {helpOption(), {{QStringLiteral("v"), versionName}, QStringLiteral("Prints the version and exits.")},
            {show,
                QStringLiteral("One second after start, opens the clipboard popup when PANEL is \"clipboard\", "
                               "else the launcher with QUERY typed in. A running Tessary opens it at once."),
                QStringLiteral("PANEL")},
            {selftest,
                QStringLiteral("Instead of starting, checks the session and Tessary's own behaviour and shows "
                               "one row per check in a window. Changes nothing.")},
            {json,
                QStringLiteral("With --selftest: prints the checks as JSON on standard output instead of showing "
                               "a window, and exits with 1 when a check failed. Attach it to bug reports.")},
            menuOption},
        {{QStringLiteral("QUERY"), QStringLiteral("With --show: the text the launcher opens with.")}}};
    Command queryCommand{QStringLiteral("tessary query [--json] [--files] [--] TEXT…"),
        QStringLiteral("Prints the launcher's rows for TEXT, ranked as the launcher ranks them; needs no display. "
                       "Put \"--\" before TEXT that starts with \"-\"."),
        {helpOption(),
            {json, QStringLiteral("Prints the rows as a JSON array of id, kind, title, subtitle and score.")},
            {files, QStringLiteral("Also finds files by name, waiting at most 15 seconds for them.")}},
        {{QStringLiteral("TEXT"), QStringLiteral("What to look for; several words are joined with spaces.")}}};
    return {tray, queryCommand};
}

Invocation parse(const QStringList &arguments)
{
    const QList<Command> all = commands();
    QCommandLineParser parser;
    // Everything after the first positional argument (a command or a query) is left to it.
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    parser.addOptions(all.first().options);
    if (!parser.parse(arguments))
        return failedParse(parser);
    if (parser.isSet(help))
        return text(Mode::help, helpText());
    if (parser.isSet(versionName))
        return text(Mode::version, version());

    const QStringList positional = parser.positionalArguments();
    Invocation invocation;
    if (parser.isSet(selftest)) {
        if (!positional.isEmpty())
            return failure(QStringLiteral("tessary: --selftest takes no arguments."));
        invocation.mode = Mode::selftest;
        invocation.json = parser.isSet(json);
        return invocation;
    }
    if (parser.isSet(json))
        return failure(QStringLiteral("tessary: --json goes with --selftest or query."));
    if (parser.isSet(show)) {
        invocation.forwarded = {QStringLiteral("--show"), parser.value(show)};
        if (!positional.isEmpty())
            invocation.forwarded.append(positional.join(QLatin1Char(' ')));
        return invocation;
    }
    if (parser.isSet(menu)) {
        invocation.forwarded = {QStringLiteral("--menu"), parser.value(menu)};
        return invocation;
    }
    if (positional.isEmpty())
        return invocation;
    if (positional.first() != query)
        return failure(QStringLiteral("tessary: Unknown command '%1'.").arg(positional.first()));
    return parseQuery(all.at(1), positional.mid(1));
}

QString helpText()
{
    const QList<Command> all = commands();
    QString out;
    for (const Command &command : all)
        out += (out.isEmpty() ? QStringLiteral("Usage: ") : QStringLiteral("       ")) + command.synopsis
            + QLatin1Char('\n');
    for (const Command &command : all) {
        out += QLatin1Char('\n') + wrapped(command.description, 0) + QLatin1Char('\n');
        for (const QCommandLineOption &option : command.options) {
            if (option.flags() & QCommandLineOption::HiddenFromHelp)
                continue;
            out += helpRow(optionNames(option), option.description());
        }
        for (const auto &[name, meaning] : command.arguments)
            out += helpRow(name, meaning);
    }
    return out;
}

QString version() { return QStringLiteral("tessary " TESSARY_VERSION "\n"); }

} // namespace tessary::CommandLine

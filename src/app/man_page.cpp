#include "app/man_page.h"

namespace tessary::ManPage {

namespace {

// Escapes what troff would read as requests or escapes.
QString escaped(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\e"));
    text.replace(QLatin1Char('-'), QStringLiteral("\\-"));
    if (text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\'')))
        text.prepend(QStringLiteral("\\&"));
    return text;
}

QString optionTag(const QCommandLineOption &option)
{
    QStringList names;
    for (const QString &name : option.names())
        names.append(QStringLiteral("\\fB")
            + escaped((name.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + name) + QStringLiteral("\\fR"));
    QString tag = names.join(QStringLiteral(", "));
    if (!option.valueName().isEmpty())
        tag += QStringLiteral(" \\fI") + escaped(option.valueName().toUpper()) + QStringLiteral("\\fR");
    return tag;
}

} // namespace

QString render(const QList<CommandLine::Command> &commands, const QString &version)
{
    QString page = QStringLiteral(".TH TESSARY 1 \"\" \"") + escaped(version.trimmed())
        + QStringLiteral("\" \"User Commands\"\n.SH NAME\ntessary \\- window snapping, launcher and clipboard history "
                         "under global shortcuts\n.SH SYNOPSIS\n");
    for (const CommandLine::Command &command : commands)
        page += QStringLiteral(".B ") + escaped(command.synopsis) + QStringLiteral("\n.br\n");
    page += QStringLiteral(".SH DESCRIPTION\n");
    for (const CommandLine::Command &command : commands) {
        page += QStringLiteral(".PP\n.B ") + escaped(command.synopsis) + QLatin1Char('\n')
            + escaped(command.description) + QLatin1Char('\n');
        for (const QCommandLineOption &option : command.options) {
            if (option.flags() & QCommandLineOption::HiddenFromHelp)
                continue;
            page += QStringLiteral(".TP\n") + optionTag(option) + QLatin1Char('\n') + escaped(option.description())
                + QLatin1Char('\n');
        }
        for (const auto &[name, meaning] : command.arguments)
            page += QStringLiteral(".TP\n\\fI") + escaped(name) + QStringLiteral("\\fR\n") + escaped(meaning)
                + QLatin1Char('\n');
    }
    page += QStringLiteral(
        ".SH EXIT STATUS\n0 on success, 1 when the program cannot start or a self-check failed, "
        "2 for a command line it does not understand.\n"
        ".SH FILES\n.TP\n\\fI$XDG_DATA_HOME/Tessary\\fR\nThe clipboard history (clipboard.json, images) "
        "and the snippets (snippets.json).\n.TP\n\\fI$XDG_STATE_HOME/Tessary/Tessary.log\\fR\nThe log.\n");
    return page;
}

} // namespace tessary::ManPage

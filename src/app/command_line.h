#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QString>
#include <QStringList>

namespace tessary {

// The command line of `tessary`, defined once: parsing, the --help text and
// the man page all come from these definitions. Qt Core only; needs no
// application object.
namespace CommandLine {

enum class Mode { tray, selftest, query, help, version, error };

struct Invocation {
    Mode mode = Mode::tray;
    // --json for `query` and `--selftest`; --files for `query`.
    bool json = false;
    bool files = false;
    // The text of `query`.
    QString text;
    // What the tray application acts on (and forwards to a running one):
    // "--show", the panel and the query as one argument, or "--menu" and a title.
    QStringList forwarded;
    // The help or version text to print; for an error, its one line.
    QString message;
};

// One documented form of the command: its synopsis, what it does, its
// options and what its positional arguments mean.
struct Command {
    QString synopsis;
    QString description;
    QList<QCommandLineOption> options;
    QList<QPair<QString, QString>> arguments;
};

// `tessary` itself, then `tessary query`.
QList<Command> commands();

// `arguments` starts with the program name.
Invocation parse(const QStringList &arguments);

QString helpText();
QString version();

} // namespace CommandLine

} // namespace tessary

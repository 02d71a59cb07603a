#include "app/selftest/checks/login_item_check.h"

#include "platform/x11/app/xdg_autostart_login_item.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace tessary {

namespace {

// The Exec value of the desktop entry at `path`.
QString execValue(const QString &path)
{
    QFile entry(path);
    if (!entry.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    while (!entry.atEnd()) {
        const QString line = QString::fromUtf8(entry.readLine()).trimmed();
        if (line.startsWith(QLatin1String("Exec=")))
            return line.mid(5);
    }
    return {};
}

// The program an Exec value starts: its first argument, unquoted.
QString programOf(const QString &exec)
{
    if (!exec.startsWith(QLatin1Char('"')))
        return exec.section(QLatin1Char(' '), 0, 0);
    QString program;
    for (qsizetype i = 1; i < exec.size() && exec.at(i) != QLatin1Char('"'); ++i) {
        if (exec.at(i) == QLatin1Char('\\') && i + 1 < exec.size())
            ++i;
        program += exec.at(i);
    }
    return program.replace(QLatin1String("%%"), QLatin1String("%"));
}

} // namespace

LoginItemCheck::LoginItemCheck()
    : SelfCheck(QStringLiteral("Open at login"))
{
}

void LoginItemCheck::run(Done done)
{
    const XdgAutostartLoginItem item;
    if (item.status() != LoginItem::Status::enabled) {
        done(CheckResult::passed(QStringLiteral("Off: Tessary does not open at login.")));
        return;
    }
    const QString path = item.entryPath();
    const QString exec = execValue(path);
    const QString program = programOf(exec);
    const bool runs = program.contains(QLatin1Char('/')) ? QFileInfo(program).isExecutable()
                                                         : !QStandardPaths::findExecutable(program).isEmpty();
    if (!runs) {
        done(CheckResult::failure(
            QStringLiteral("On, but %1 starts \"%2\", which is not an installed program.").arg(path, exec),
            QStringLiteral("Turn Open at Login off and on again in Settings.")));
        return;
    }
    done(CheckResult::passed(QStringLiteral("On: %1 starts %2.").arg(path, exec)));
}

} // namespace tessary

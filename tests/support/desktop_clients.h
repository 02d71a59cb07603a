#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// The X clients (xdotool, xclip, xwininfo, …) tests drive and observe the
// desktop with.
namespace tessary::DesktopClients {

// Runs `program` to its end, at most 10 s, with `input` on its standard
// input; gives its standard output trimmed.
QString run(const QString &program, const QStringList &arguments, const QByteArray &input = {});
QString xdotool(const QStringList &arguments);

} // namespace tessary::DesktopClients

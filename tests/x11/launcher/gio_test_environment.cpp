#include "gio_test_environment.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <unistd.h>

namespace tessary {

namespace {

void writeFile(const QString &path, const QByteArray &content, bool executable = false)
{
    QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
    file.close();
    if (executable)
        file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
}

// Constructed during static initialization, before anything reads the variables.
const GioTestEnvironment &environment = GioTestEnvironment::instance();

} // namespace

const GioTestEnvironment &GioTestEnvironment::instance()
{
    static const GioTestEnvironment instance;
    return instance;
}

GioTestEnvironment::GioTestEnvironment()
{
    const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR");
    m_root = QString::fromLocal8Bit(runtime.isEmpty() ? QByteArray("/tmp") : runtime)
        + QStringLiteral("/gio-test-%1").arg(::getpid());
    QDir(m_root).removeRecursively();
    qputenv("XDG_DATA_HOME", QFile::encodeName(dataHome()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_root + QStringLiteral("/config")));
    qputenv("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    qputenv("DBUS_SESSION_BUS_ADDRESS", QFile::encodeName(QStringLiteral("unix:path=%1/no-bus").arg(m_root)));

    const QString script = m_root + QStringLiteral("/recorder.sh");
    writeFile(script, "#!/bin/sh\necho \"started $*\" >> \"$0.log\"\n", true);
    writeFile(recorderEntry(),
        "[Desktop Entry]\nType=Application\nName=Tessary Recorder\nExec=" + QFile::encodeName(script)
            + " %u\nMimeType=x-scheme-handler/https;text/plain;inode/directory;\n");
    writeFile(m_root + QStringLiteral("/config/mimeapps.list"),
        "[Default Applications]\nx-scheme-handler/https=tessary-recorder.desktop\n"
        "text/plain=tessary-recorder.desktop\ninode/directory=tessary-recorder.desktop\n");
}

bool GioTestEnvironment::recorderLogged(const QString &text) const
{
    QFile log(m_root + QStringLiteral("/recorder.sh.log"));
    return QTest::qWaitFor(
        [&] {
            if (!log.open(QIODevice::ReadOnly))
                return false;
            const bool found = QString::fromUtf8(log.readAll()).contains(text);
            log.close();
            return found;
        },
        5000);
}

} // namespace tessary

#include "x11_bench_input.h"

#include <QFile>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QtCore/qtestsupport_core.h>

#include <xcb/xtest.h>

#include <cstdlib>
#include <iterator>

namespace tessary::BenchInput {

xcb_keycode_t keycodeOf(xcb_connection_t *connection, xcb_keysym_t symbol)
{
    const xcb_setup_t *setup = xcb_get_setup(connection);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    auto *mapping = xcb_get_keyboard_mapping_reply(
        connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, uint8_t(count)), nullptr);
    if (!mapping)
        return 0;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(mapping);
    xcb_keycode_t found = 0;
    for (int i = 0; found == 0 && i < count * mapping->keysyms_per_keycode; ++i) {
        if (symbols[i] == symbol)
            found = xcb_keycode_t(setup->min_keycode + i / mapping->keysyms_per_keycode);
    }
    std::free(mapping);
    return found;
}

void pressChord(xcb_connection_t *connection, std::initializer_list<xcb_keycode_t> chord)
{
    for (const xcb_keycode_t key : chord)
        xcb_test_fake_input(connection, XCB_KEY_PRESS, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    for (auto key = std::rbegin(chord); key != std::rend(chord); ++key)
        xcb_test_fake_input(connection, XCB_KEY_RELEASE, *key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    xcb_flush(connection);
}

bool startTessary(QProcess &tessary, const QString &binary, const QString &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), home);
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("tessary.app.info=true"));
    tessary.setProcessEnvironment(environment);
    tessary.start(binary, {});
    QByteArray output;
    return QTest::qWaitFor(
        [&] {
            output += tessary.readAllStandardError();
            return output.contains("ready at");
        },
        20000);
}

double residentMiB(qint64 pid)
{
    QFile status(QStringLiteral("/proc/%1/status").arg(pid));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toDouble() / 1024;
    }
    return 0;
}

} // namespace tessary::BenchInput

#include "platform/x11/launcher/gio_desktop_opener.h"

#include "gio_test_environment.h"
#include "platform/x11/launcher/startup_notifier.h"
#include "platform/x11/x11_connection.h"
#include "session/private_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>
#include <cstring>

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <xcb/xcb.h>

namespace tessary {
namespace {

const GioTestEnvironment &env() { return GioTestEnvironment::instance(); }

QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(10000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

TEST(GioDesktopOpener, handsUrlsFilesFoldersAndEntriesToTheirHandlers)
{
    GioDesktopOpener opener;
    QTemporaryDir dir;
    const QString folder = dir.filePath(QStringLiteral("reports"));
    QDir().mkpath(folder);
    const QString note = folder + QStringLiteral("/note.txt");
    QFile file(note);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("hello\n");
    file.close();

    EXPECT_TRUE(opener.openUrl(QUrl(QStringLiteral("https://example.com/search?q=cats%20%26%20dogs"))));
    EXPECT_TRUE(env().recorderLogged(QStringLiteral("started https://example.com/search?q=cats%20%26%20dogs")));
    EXPECT_TRUE(opener.openFile(note));
    EXPECT_TRUE(env().recorderLogged(note));
    // Without a file manager to select it in, revealing opens the folder.
    EXPECT_TRUE(opener.revealInFileManager(note));
    EXPECT_TRUE(env().recorderLogged(QStringLiteral("started ") + folder + QLatin1Char('\n')));
    EXPECT_TRUE(opener.openApplication(env().recorderEntry()));
    EXPECT_TRUE(env().recorderLogged(QStringLiteral("started \n")));
}

TEST(GioDesktopOpener, refusesWhatItCannotOpen)
{
    GioDesktopOpener opener;
    EXPECT_FALSE(opener.openFile(QStringLiteral("/nonexistent/file.txt")));
    EXPECT_FALSE(opener.openUrl(QUrl(QStringLiteral("no-handler-scheme:thing"))));
    EXPECT_FALSE(opener.openUrl(QUrl()));
    EXPECT_FALSE(opener.openApplication(QStringLiteral("/nonexistent/app.desktop")));
    EXPECT_FALSE(opener.revealInFileManager(QStringLiteral("/nonexistent/file.txt")));
}

TEST(GioDesktopOpener, launchesTheSystemsTerminalOnTheDisplay)
{
    const QString entry = QStringLiteral("/usr/share/applications/debian-xterm.desktop");
    if (!QFile::exists(entry))
        GTEST_SKIP() << "no XTerm desktop entry on this machine";
    GioDesktopOpener opener;
    ASSERT_TRUE(opener.openApplication(entry));
    const QStringList search{QStringLiteral("search"), QStringLiteral("--class"), QStringLiteral("XTerm")};
    QString windows;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !(windows = run(QStringLiteral("xdotool"), search)).isEmpty(); }, 10000));
    for (const QString &window : windows.split(QLatin1Char('\n'), Qt::SkipEmptyParts))
        run(QStringLiteral("xdotool"), {QStringLiteral("windowkill"), window});
}

// The startup-notification messages other clients see on the root window.
class StartupMessages {
public:
    StartupMessages()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection, root, XCB_CW_EVENT_MASK, &mask);
        for (const char *name : {"_NET_STARTUP_INFO_BEGIN", "_NET_STARTUP_INFO"}) {
            xcb_intern_atom_reply_t *reply = xcb_intern_atom_reply(
                m_connection, xcb_intern_atom(m_connection, false, std::strlen(name), name), nullptr);
            m_atoms.append(reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE));
            std::free(reply);
        }
        roundTrip();
    }
    ~StartupMessages() { xcb_disconnect(m_connection); }

    // The next complete message, waiting up to five seconds.
    QByteArray next()
    {
        QByteArray text;
        static_cast<void>(QTest::qWaitFor(
            [&] {
                while (xcb_generic_event_t *event = xcb_poll_for_event(m_connection)) {
                    const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event);
                    if ((event->response_type & 0x7f) == XCB_CLIENT_MESSAGE && m_atoms.contains(message->type))
                        text.append(reinterpret_cast<const char *>(message->data.data8), 20);
                    std::free(event);
                    if (text.contains('\0'))
                        return true;
                }
                return false;
            },
            5000));
        return text.left(text.indexOf('\0'));
    }

private:
    void roundTrip() { std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr)); }

    xcb_connection_t *m_connection;
    QList<xcb_atom_t> m_atoms;
};

TEST(GioDesktopOpener, announcesApplicationsThatAskForStartupNotification)
{
    X11Connection *x11 = X11Connection::instance();
    ASSERT_NE(x11, nullptr);
    StartupNotifier notifier(*x11);
    GioDesktopOpener opener(&notifier);
    StartupMessages messages;
    QTemporaryDir dir;
    const QString log = dir.filePath(QStringLiteral("ids.log"));
    const QString script = dir.filePath(QStringLiteral("app.sh"));
    QFile scriptFile(script);
    ASSERT_TRUE(scriptFile.open(QIODevice::WriteOnly));
    scriptFile.write("#!/bin/sh\necho \"$1 [$DESKTOP_STARTUP_ID]\" >> '" + log.toUtf8() + "'\n");
    scriptFile.close();
    scriptFile.setPermissions(scriptFile.permissions() | QFileDevice::ExeOwner);
    const auto entry = [&dir, &script](const char *name, const char *notify) {
        const QString path = dir.filePath(QString::fromLatin1(name) + QStringLiteral(".desktop"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=Launched\nExec=" + script.toUtf8() + " " + name
            + "\nStartupNotify=" + notify + "\n");
        return path;
    };
    const auto logged = [&log] {
        QFile file(log);
        static_cast<void>(QTest::qWaitFor([&file] { return file.exists() && file.size() > 0; }, 5000));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };

    ASSERT_TRUE(opener.openApplication(entry("quiet", "false")));
    EXPECT_EQ(logged(), "quiet []\n") << "no announcement unless the entry asks for one";
    QFile::remove(log);

    ASSERT_TRUE(opener.openApplication(entry("announced", "true")));
    const QByteArray line = logged();
    ASSERT_TRUE(line.startsWith("announced [") && line.endsWith("]\n")) << line.constData();
    const QByteArray id = line.mid(11, line.size() - 13);
    EXPECT_TRUE(id.startsWith("tessary") && id.contains("_TIME")) << id.constData();
    const QByteArray message = messages.next();
    EXPECT_TRUE(message.startsWith("new: ")) << message.constData();
    EXPECT_TRUE(message.contains(QByteArray("ID=" + id))) << message.constData();
    EXPECT_TRUE(message.contains("NAME=Launched")) << message.constData();
}

// A D-Bus activatable application: records the platform data of each call.
class ActivatableApp : public StandIn {
public:
    static constexpr const char *id = "org.tessary.ActivationTest";

    explicit ActivatableApp(const PrivateBus &bus)
        : StandIn(bus, {QString::fromLatin1(id)}, {QStringLiteral("/org/tessary/ActivationTest")})
    {
    }

    QList<QVariantMap> platformData;

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == QLatin1String("Activate") && !message.arguments().isEmpty())
            platformData.append(qdbus_cast<QVariantMap>(message.arguments().constFirst()));
        return StandIn::handleMessage(message, connection);
    }
};

TEST(GioDesktopOpener, givesADBusActivatedApplicationItsStartupId)
{
    X11Connection *x11 = X11Connection::instance();
    ASSERT_NE(x11, nullptr);
    StartupNotifier notifier(*x11);
    GioDesktopOpener opener(&notifier);
    StartupMessages messages;
    PrivateBus bus;
    ASSERT_TRUE(bus.isRunning());
    const QByteArray noBus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.address().toUtf8());
    QTemporaryDir dir;
    const QString entry = dir.filePath(QString::fromLatin1(ActivatableApp::id) + QStringLiteral(".desktop"));
    QFile file(entry);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "[Desktop Entry]\nType=Application\nName=Activated\nExec=false\nDBusActivatable=true\nStartupNotify=true\n");
    file.close();
    {
        ActivatableApp app(bus);
        ASSERT_TRUE(opener.openApplication(entry));
        ASSERT_TRUE(QTest::qWaitFor([&app] { return !app.platformData.isEmpty(); }, 5000));
        const QByteArray id = app.platformData.constFirst().value(QStringLiteral("desktop-startup-id")).toByteArray();
        EXPECT_TRUE(id.startsWith("tessary") && id.contains("_TIME")) << id.constData();
        const QByteArray message = messages.next();
        EXPECT_TRUE(message.startsWith("new: ") && message.contains(QByteArray("ID=" + id))) << message.constData();
    }
    // GIO's shared connection to this bus must outlive it quietly.
    if (GDBusConnection *connection = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr)) {
        g_dbus_connection_set_exit_on_close(connection, false);
        g_object_unref(connection);
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", noBus);
}

} // namespace
} // namespace tessary

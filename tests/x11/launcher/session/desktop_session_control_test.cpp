#include "platform/x11/launcher/session/desktop_session_control.h"

#include "platform/fake/launcher/recording_process_launcher.h"
#include "platform/x11/launcher/session/freedesktop_trash.h"
#include "private_bus.h"

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

using InterfaceMap = QMap<QString, QVariantMap>;
using ObjectMap = QMap<QDBusObjectPath, InterfaceMap>;

namespace tessary {
namespace {

using namespace Qt::StringLiterals;
using Action = SessionControl::Action;

class DesktopSessionControlTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { s_bus = new PrivateBus; }
    static void TearDownTestSuite()
    {
        delete s_bus;
        s_bus = nullptr;
    }

    void SetUp() override { ASSERT_TRUE(s_bus->isRunning()) << "dbus-daemon did not start"; }

    // A control on the private bus (as both session and system bus), once it has probed.
    std::unique_ptr<DesktopSessionControl> control(DesktopFamily family, const QString &sessionId = {})
    {
        // Never the trash cans of this machine's volumes.
        DesktopSessionControl::Environment environment{family, sessionId,
            [trash = m_dataHome.filePath(u"Trash"_s)] { return QStringList{trash}; }, s_bus->connect(u"client"_s),
            s_bus->connect(u"client"_s)};
        auto control = std::make_unique<DesktopSessionControl>(environment, m_processes);
        bool probed = false;
        QObject::connect(control.get(), &DesktopSessionControl::probed, [&probed] { probed = true; });
        EXPECT_TRUE(QTest::qWaitFor([&probed] { return probed; }, 5000));
        return control;
    }

    // A control probed with only `bin` on PATH, holding a program `name` running `script`.
    std::unique_ptr<DesktopSessionControl> controlFinding(
        DesktopFamily family, const QTemporaryDir &bin, const QString &name, const QByteArray &script = {})
    {
        QFile program(bin.filePath(name));
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write(script);
        program.close();
        program.setPermissions(program.permissions() | QFileDevice::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", bin.path().toUtf8());
        auto found = control(family);
        qputenv("PATH", path);
        return found;
    }

    // Performs `action` and waits for its outcome.
    static std::optional<bool> run(SessionControl &control, Action action)
    {
        std::optional<bool> outcome;
        control.perform(action, [&outcome](bool ok) { outcome = ok; });
        static_cast<void>(QTest::qWaitFor([&outcome] { return outcome.has_value(); }, 5000));
        return outcome;
    }

    static PrivateBus *s_bus;
    QTemporaryDir m_dataHome;
    RecordingProcessLauncher m_processes;
};

PrivateBus *DesktopSessionControlTest::s_bus = nullptr;

struct FamilyCase {
    DesktopFamily family;
    const char *name;
    QString sessionManager;
    QString sessionPath;
    QString sessionInterface;
    QStringList endMethods; // logout, restart, shutdown
    QString screenSaver;    // its interface is named like the service
    QString screenSaverPath;
};

TEST_F(DesktopSessionControlTest, eachDesktopEndsTheSessionThroughItsSessionManagerAndLocksThroughItsScreenSaver)
{
    const QString gnomeSession = u"org.gnome.SessionManager"_s;
    const FamilyCase cases[] = {
        {DesktopFamily::gnome, "GNOME", gnomeSession, u"/org/gnome/SessionManager"_s, gnomeSession,
            {u"Logout(1)"_s, u"Reboot()"_s, u"Shutdown()"_s}, u"org.gnome.ScreenSaver"_s, u"/org/gnome/ScreenSaver"_s},
        {DesktopFamily::mate, "MATE", gnomeSession, u"/org/gnome/SessionManager"_s, gnomeSession,
            {u"Logout(1)"_s, u"RequestReboot()"_s, u"RequestShutdown()"_s}, u"org.mate.ScreenSaver"_s,
            u"/org/mate/ScreenSaver"_s},
        {DesktopFamily::kde, "KDE", u"org.kde.Shutdown"_s, u"/Shutdown"_s, u"org.kde.Shutdown"_s,
            {u"logout()"_s, u"logoutAndReboot()"_s, u"logoutAndShutdown()"_s}, u"org.freedesktop.ScreenSaver"_s,
            u"/ScreenSaver"_s},
        {DesktopFamily::xfce, "Xfce", u"org.xfce.SessionManager"_s, u"/org/xfce/SessionManager"_s,
            u"org.xfce.Session.Manager"_s, {u"Logout(false,true)"_s, u"Restart(true)"_s, u"Shutdown(true)"_s},
            u"org.xfce.ScreenSaver"_s, u"/org/xfce/ScreenSaver"_s},
        {DesktopFamily::lxqt, "LXQt", u"org.lxqt.session"_s, u"/LXQtSession"_s, u"org.lxqt.session"_s,
            {u"logout()"_s, u"reboot()"_s, u"powerOff()"_s}, u"org.freedesktop.ScreenSaver"_s, u"/ScreenSaver"_s},
    };
    for (const FamilyCase &c : cases) {
        SCOPED_TRACE(c.name);
        StandIn services(*s_bus, {c.sessionManager, c.screenSaver}, {c.sessionPath, c.screenSaverPath});
        const auto subject = control(c.family);
        for (const Action action :
            {Action::logout, Action::restart, Action::shutdown, Action::lock, Action::screenSaver}) {
            EXPECT_TRUE(subject->offers(action));
            EXPECT_EQ(run(*subject, action), true);
        }
        QStringList expected;
        for (const QString &method : c.endMethods)
            expected << c.sessionPath + u' ' + c.sessionInterface + u'.' + method;
        for (const QString &method : {u"Lock()"_s, u"SetActive(true)"_s})
            expected << c.screenSaverPath + u' ' + c.screenSaver + u'.' + method;
        EXPECT_EQ(services.calls, expected);
    }
}

TEST_F(DesktopSessionControlTest, withoutSessionManagerLogindEndsTheSessionAndSleeps)
{
    StandIn logind(*s_bus, {u"org.freedesktop.login1"_s}, {u"/org/freedesktop/login1"_s});
    logind.replies.insert(u"CanSuspend"_s, {u"yes"_s});
    logind.replies.insert(u"CanReboot"_s, {u"challenge"_s});
    logind.replies.insert(u"CanPowerOff"_s, {u"no"_s});
    const auto subject = control(DesktopFamily::xfce, u"c7"_s);
    EXPECT_TRUE(subject->offers(Action::sleep));
    EXPECT_TRUE(subject->offers(Action::restart));
    EXPECT_FALSE(subject->offers(Action::shutdown)) << "logind said no";
    EXPECT_TRUE(subject->offers(Action::logout));
    logind.calls.clear();
    EXPECT_EQ(run(*subject, Action::sleep), true);
    EXPECT_EQ(run(*subject, Action::restart), true);
    EXPECT_EQ(run(*subject, Action::logout), true);
    EXPECT_EQ(logind.calls,
        (QStringList{u"/org/freedesktop/login1 org.freedesktop.login1.Manager.Suspend(true)"_s,
            u"/org/freedesktop/login1 org.freedesktop.login1.Manager.Reboot(true)"_s,
            u"/org/freedesktop/login1 org.freedesktop.login1.Manager.TerminateSession(c7)"_s}));
}

TEST_F(DesktopSessionControlTest, withNothingOnTheBusesOnlyTheTrashIsOffered)
{
    const auto subject = control(DesktopFamily::other);
    for (const Action action : {Action::sleep, Action::lock, Action::screenSaver, Action::darkMode, Action::eject,
             Action::settings, Action::logout, Action::restart, Action::shutdown})
        EXPECT_FALSE(subject->offers(action)) << static_cast<int>(action);
    EXPECT_TRUE(subject->offers(Action::emptyTrash));
}

TEST_F(DesktopSessionControlTest, aServiceThatAnswersWithAnErrorIsAFailure)
{
    // The name is there, its object is not.
    StandIn broken(*s_bus, {u"org.gnome.ScreenSaver"_s}, {});
    const auto subject = control(DesktopFamily::gnome);
    ASSERT_TRUE(subject->offers(Action::lock));
    EXPECT_EQ(run(*subject, Action::lock), false);
}

TEST_F(DesktopSessionControlTest, darkModeSwitchesXfcesThemeAndIsOfferedOnlyWhereItActs)
{
    StandIn xfconf(*s_bus, {u"org.xfce.Xfconf"_s}, {u"/org/xfce/Xfconf"_s});
    xfconf.replies.insert(u"GetProperty"_s, {QVariant::fromValue(QDBusVariant(u"Adwaita"_s))});
    for (const DesktopFamily elsewhere : {DesktopFamily::lxqt, DesktopFamily::mate, DesktopFamily::other})
        EXPECT_FALSE(control(elsewhere)->offers(Action::darkMode));

    const auto subject = control(DesktopFamily::xfce);
    ASSERT_TRUE(subject->offers(Action::darkMode));
    xfconf.calls.clear();
    EXPECT_EQ(run(*subject, Action::darkMode), true);
    EXPECT_EQ(xfconf.calls,
        (QStringList{u"/org/xfce/Xfconf org.xfce.Xfconf.GetProperty(xsettings,/Net/ThemeName)"_s,
            u"/org/xfce/Xfconf org.xfce.Xfconf.SetProperty(xsettings,/Net/ThemeName,Adwaita-dark)"_s}));
    xfconf.replies.insert(u"GetProperty"_s, {QVariant::fromValue(QDBusVariant(u"Greybird-dark"_s))});
    xfconf.calls.clear();
    EXPECT_EQ(run(*subject, Action::darkMode), true);
    EXPECT_EQ(
        xfconf.calls.value(1), u"/org/xfce/Xfconf org.xfce.Xfconf.SetProperty(xsettings,/Net/ThemeName,Greybird)"_s);
}

TEST_F(DesktopSessionControlTest, darkModeFlipsKdesColorSchemeAndGnomesColorScheme)
{
    QTemporaryDir bin;
    const QString log = bin.filePath(u"applied"_s);
    const auto kde = controlFinding(DesktopFamily::kde, bin, u"plasma-apply-colorscheme"_s,
        "#!/bin/sh\nif [ \"$1\" = --list-schemes ]; then\n"
        "  printf ' * BreezeClassic\\n * BreezeLight (current color scheme)\\n * BreezeDark\\n'\n"
        "else echo \"$1\" >> '"
            + log.toUtf8() + "'; fi\n");
    ASSERT_TRUE(kde->offers(Action::darkMode));
    EXPECT_EQ(run(*kde, Action::darkMode), true);
    QFile applied(log);
    ASSERT_TRUE(applied.open(QIODevice::ReadOnly));
    EXPECT_EQ(applied.readAll(), "BreezeDark\n");

    // The schema is the real one; the values stay in memory.
    qputenv("GSETTINGS_BACKEND", "memory");
    const auto gnome = control(DesktopFamily::gnome);
    if (!gnome->offers(Action::darkMode))
        GTEST_SKIP() << "no GNOME interface schema with a color scheme here";
    EXPECT_EQ(run(*gnome, Action::darkMode), true);
    EXPECT_EQ(run(*gnome, Action::darkMode), true);
}

TEST_F(DesktopSessionControlTest, ejectUnmountsAndEjectsOnlyRemovableDrives)
{
    qDBusRegisterMetaType<QByteArrayList>();
    qDBusRegisterMetaType<InterfaceMap>();
    qDBusRegisterMetaType<ObjectMap>();
    const QString root = u"/org/freedesktop/UDisks2"_s;
    const QString drive = u"org.freedesktop.UDisks2.Drive"_s;
    const QString block = u"org.freedesktop.UDisks2.Block"_s;
    const QString filesystem = u"org.freedesktop.UDisks2.Filesystem"_s;
    const auto mountedOn = [&](const QString &drivePath) {
        return InterfaceMap{{block, {{u"Drive"_s, QVariant::fromValue(QDBusObjectPath(drivePath))}}},
            {filesystem, {{u"MountPoints"_s, QVariant::fromValue(QByteArrayList{QByteArray("/media/x", 9)})}}}};
    };
    const ObjectMap objects{
        {QDBusObjectPath(root + u"/drives/stick"_s),
            {{drive, {{u"Removable"_s, true}, {u"Ejectable"_s, false}, {u"CanPowerOff"_s, true}}}}},
        {QDBusObjectPath(root + u"/drives/dvd"_s),
            {{drive, {{u"Removable"_s, true}, {u"Ejectable"_s, true}, {u"CanPowerOff"_s, false}}}}},
        {QDBusObjectPath(root + u"/drives/internal"_s),
            {{drive, {{u"Removable"_s, false}, {u"Ejectable"_s, false}, {u"CanPowerOff"_s, true}}}}},
        {QDBusObjectPath(root + u"/block_devices/sdb1"_s), mountedOn(root + u"/drives/stick"_s)},
        {QDBusObjectPath(root + u"/block_devices/sda1"_s), mountedOn(root + u"/drives/internal"_s)},
    };
    StandIn udisks(*s_bus, {u"org.freedesktop.UDisks2"_s}, {root});
    udisks.replies.insert(u"GetManagedObjects"_s, {QVariant::fromValue(objects)});
    const auto subject = control(DesktopFamily::other);
    ASSERT_TRUE(subject->offers(Action::eject));
    EXPECT_EQ(run(*subject, Action::eject), true);
    const QStringList expected{root + u" org.freedesktop.DBus.ObjectManager.GetManagedObjects()"_s,
        root + u"/block_devices/sdb1 org.freedesktop.UDisks2.Filesystem.Unmount(a{sv})"_s,
        root + u"/drives/dvd org.freedesktop.UDisks2.Drive.Eject(a{sv})"_s,
        root + u"/drives/stick org.freedesktop.UDisks2.Drive.PowerOff(a{sv})"_s};
    EXPECT_EQ(udisks.calls.join(u'\n').toStdString(), expected.join(u'\n').toStdString());
}

TEST_F(DesktopSessionControlTest, emptyingTheTrashRemovesFilesInfoAndReadOnlyFolders)
{
    const QString trash = m_dataHome.filePath(u"Trash"_s);
    QDir().mkpath(trash + u"/files/folder/inner"_s);
    QDir().mkpath(trash + u"/info"_s);
    for (const QString &file : {u"/files/a.txt"_s, u"/files/folder/inner/b"_s, u"/info/a.txt.trashinfo"_s,
             u"/info/folder.trashinfo"_s, u"/directorysizes"_s}) {
        QFile f(trash + file);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    QFile::setPermissions(trash + u"/files/folder/inner"_s, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    QFile::setPermissions(trash + u"/files/folder"_s, QFileDevice::ReadOwner | QFileDevice::ExeOwner);

    EXPECT_TRUE(FreedesktopTrash::trashFolders(m_dataHome.path()).contains(trash));
    const auto subject = control(DesktopFamily::other);
    EXPECT_EQ(run(*subject, Action::emptyTrash), true);
    EXPECT_TRUE(QDir(trash + u"/files"_s).isEmpty());
    EXPECT_TRUE(QDir(trash + u"/info"_s).isEmpty());
    EXPECT_FALSE(QFile::exists(trash + u"/directorysizes"_s));
}

TEST_F(DesktopSessionControlTest, settingsOpenTheDesktopsOwnProgram)
{
    QTemporaryDir bin;
    const auto xfce = controlFinding(DesktopFamily::xfce, bin, u"xfce4-settings-manager"_s);
    const auto kde = controlFinding(DesktopFamily::kde, bin, u"xfce4-settings-manager"_s);
    EXPECT_FALSE(kde->offers(Action::settings)) << "KDE's program is not installed";
    ASSERT_TRUE(xfce->offers(Action::settings));
    EXPECT_EQ(run(*xfce, Action::settings), true);
    ASSERT_EQ(m_processes.calls().size(), 1);
    EXPECT_EQ(m_processes.calls().first().program, bin.filePath(u"xfce4-settings-manager"_s));
}

} // namespace
} // namespace tessary

#include "platform/x11/launcher/desktop_entry_catalog.h"

#include "core/launcher/app_index.h"
#include "gio_test_environment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tessary {
namespace {

QStringList names(const QList<AppEntry> &apps)
{
    QStringList result;
    for (const AppEntry &app : apps)
        result.append(app.name);
    return result;
}

class DesktopEntryCatalogTest : public ::testing::Test {
protected:
    void SetUp() override { GioTestEnvironment::instance(); }

    QString entry(const QString &root, const QString &relative, const QByteArray &keys)
    {
        const QString path = m_dir.filePath(root + QLatin1Char('/') + relative);
        QDir().mkpath(path.section(QLatin1Char('/'), 0, -2));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\n" + keys);
        return path;
    }
    QString root(const QString &name) const { return m_dir.filePath(name); }

    QTemporaryDir m_dir;
    DesktopEntryCatalog m_catalog;
};

TEST_F(DesktopEntryCatalogTest, listsOnlyShownApplicationsOfTheFirstRootThatHasTheirId)
{
    const QByteArray app = "Type=Application\nExec=true\n";
    const QString viewer = entry(QStringLiteral("system"), QStringLiteral("viewer.desktop"), app + "Name=Viewer\n");
    entry(QStringLiteral("system"), QStringLiteral("site.desktop"), "Type=Link\nName=Site\nURL=https://example.com\n");
    entry(QStringLiteral("system"), QStringLiteral("helper.desktop"), app + "Name=Helper\nNoDisplay=true\n");
    entry(QStringLiteral("system"), QStringLiteral("missing.desktop"), app + "Name=Missing\nTryExec=/nonexistent/x\n");
    entry(QStringLiteral("system"), QStringLiteral("broken.desktop"), "Name=Broken\n");
    entry(QStringLiteral("system"), QStringLiteral("editor.desktop"), app + "Name=Editor\n");
    entry(QStringLiteral("user"), QStringLiteral("editor.desktop"), app + "Name=Editor\nHidden=true\n");
    entry(QStringLiteral("system"), QStringLiteral("kde4/tool.desktop"), app + "Name=Tool (system)\n");
    const QString tool = entry(QStringLiteral("user"), QStringLiteral("kde4-tool.desktop"), app + "Name=Tool (user)\n");

    const QList<AppEntry> apps
        = AppIndex::scan({root(QStringLiteral("user")), root(QStringLiteral("system"))}, m_catalog);
    EXPECT_EQ(names(apps), (QStringList{QStringLiteral("Tool (user)"), QStringLiteral("Viewer")}));
    ASSERT_EQ(apps.size(), 2);
    EXPECT_EQ(
        apps.at(0), (AppEntry{QStringLiteral("Tool (user)"), QStringLiteral("kde4-tool"), QUrl::fromLocalFile(tool)}));
    EXPECT_EQ(apps.at(1).path(), viewer);
}

TEST_F(DesktopEntryCatalogTest, namesFollowTheUsersLanguage)
{
    const QString path = entry(QStringLiteral("apps"), QStringLiteral("viewer.desktop"),
        "Type=Application\nExec=true\nName=Viewer\nName[de]=Betrachter\nName[fr]=Visionneuse\n");
    struct Case {
        const char *language;
        const char *name;
    } const cases[] = {{"de", "Betrachter"}, {"fr_FR", "Visionneuse"}, {"it", "Viewer"}};
    const QByteArray previous = qgetenv("LANGUAGE");
    for (const Case &c : cases) {
        qputenv("LANGUAGE", c.language);
        EXPECT_EQ(m_catalog.displayName(path), QString::fromUtf8(c.name)) << c.language;
    }
    qputenv("LANGUAGE", previous);
}

TEST_F(DesktopEntryCatalogTest, defaultRootsFindTheInstalledTerminal)
{
    const QStringList roots = m_catalog.defaultRoots();
    ASSERT_FALSE(roots.isEmpty());
    EXPECT_EQ(roots.first(), GioTestEnvironment::instance().dataHome() + QStringLiteral("/applications"));
    EXPECT_TRUE(roots.contains(QStringLiteral("/usr/share/applications")));

    const QList<AppEntry> apps = AppIndex::scan(roots, m_catalog);
    const auto xterm = std::find_if(
        apps.begin(), apps.end(), [](const AppEntry &app) { return app.name == QLatin1String("XTerm"); });
    ASSERT_NE(xterm, apps.end());
    EXPECT_EQ(xterm->path(), QStringLiteral("/usr/share/applications/debian-xterm.desktop"));
    EXPECT_EQ(xterm->fileName, QStringLiteral("debian-xterm"));
}

TEST_F(DesktopEntryCatalogTest, otherNamesAreTheUntranslatedNameGenericNameAndKeywords)
{
    const QString path = entry(QStringLiteral("apps"), QStringLiteral("viewer.desktop"),
        "Type=Application\nExec=true\nName=Viewer\nName[de]=Betrachter\nGenericName=Image Viewer\n"
        "GenericName[de]=Bildbetrachter\nKeywords=photo;picture;\nKeywords[de]=Foto;Bild;\n");
    struct Case {
        const char *language;
        QStringList names;
    } const cases[] = {
        {"de",
            {QStringLiteral("Viewer"), QStringLiteral("Bildbetrachter"), QStringLiteral("Foto"),
                QStringLiteral("Bild")}},
        {"it", {QStringLiteral("Image Viewer"), QStringLiteral("photo"), QStringLiteral("picture")}},
    };
    const QByteArray previous = qgetenv("LANGUAGE");
    for (const Case &c : cases) {
        qputenv("LANGUAGE", c.language);
        EXPECT_EQ(m_catalog.otherNames(path), c.names) << c.language;
    }
    qputenv("LANGUAGE", previous);
}

TEST_F(DesktopEntryCatalogTest, wineProgramsInNestedFoldersAreListed)
{
    const QByteArray app = "Type=Application\nExec=true\n";
    entry(
        QStringLiteral("user"), QStringLiteral("wine/Programs/Vendor/Product/Product.desktop"), app + "Name=Product\n");
    entry(QStringLiteral("user"), QStringLiteral("wine/Programs/Vendor/Product/Tools/Uninstall.desktop"),
        app + "Name=Uninstall Product\n");
    EXPECT_EQ(names(AppIndex::scan({root(QStringLiteral("user"))}, m_catalog)),
        (QStringList{QStringLiteral("Product"), QStringLiteral("Uninstall Product")}));
}

TEST_F(DesktopEntryCatalogTest, flatpakAndSnapExportsAreRootsEvenOutsideTheDataDirs)
{
    const QString exports
        = GioTestEnvironment::instance().dataHome() + QStringLiteral("/flatpak/exports/share/applications");
    ASSERT_FALSE(qEnvironmentVariable("XDG_DATA_DIRS").contains(QStringLiteral("flatpak")));
    QDir().mkpath(exports);
    QFile file(exports + QStringLiteral("/org.example.Paint.desktop"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Desktop Entry]\nType=Application\nExec=true\nName=Paint (Flatpak)\n");
    file.close();

    const QStringList roots = m_catalog.defaultRoots();
    EXPECT_TRUE(roots.contains(QStringLiteral("/var/lib/flatpak/exports/share/applications")));
    EXPECT_TRUE(roots.contains(QStringLiteral("/var/lib/snapd/desktop/applications")));
    EXPECT_TRUE(names(AppIndex::scan(roots, m_catalog)).contains(QStringLiteral("Paint (Flatpak)")));
    QFile::remove(file.fileName());
}

} // namespace
} // namespace tessary

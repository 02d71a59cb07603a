#pragma once

#include "core/platform/application_catalog.h"

namespace tessary {

// Applications as fixture folders: "<Name>.app" folders whose optional file
// "name" holds the display name and "other" its other names, one per line; a
// file "hidden" inside hides the entry.
// Entries shadow one another by full path, or by file name when asked to.
class FakeApplicationCatalog final : public ApplicationCatalog {
public:
    enum class Key { path, fileName };

    explicit FakeApplicationCatalog(QStringList roots = {}, Key key = Key::path);

    QStringList defaultRoots() const override { return m_roots; }
    QString entrySuffix() const override;
    QString entryKey(const QString &root, const QString &path) const override;
    std::optional<QString> displayName(const QString &path) const override;
    QStringList otherNames(const QString &path) const override;

    // Writes a fixture entry below `folder`; an empty name leaves the name file out.
    static QString addApp(const QString &folder, const QString &fileName, const QString &name = {}, bool hidden = false,
        const QStringList &otherNames = {});

private:
    QStringList m_roots;
    Key m_key;
};

} // namespace tessary

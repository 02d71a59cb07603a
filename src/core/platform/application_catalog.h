#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace tessary {

// What the platform calls an installed application and where it keeps them:
// ".app" bundles on macOS, desktop entries of the XDG data dirs on Linux. The
// walk over the folders is the core's; every call here may run on any thread.
class ApplicationCatalog {
public:
    virtual ~ApplicationCatalog() = default;

    // Folders holding applications, highest precedence first; a root may also
    // be an application entry itself.
    virtual QStringList defaultRoots() const = 0;
    // File-name suffix of an application entry, dot included.
    virtual QString entrySuffix() const = 0;
    // The identity under which entries shadow one another: the first entry
    // seen with a key wins, even when it turns out not to be shown.
    virtual QString entryKey(const QString &root, const QString &path) const = 0;
    // The localized name to list the entry under, or none when the entry is not
    // an application the user should see.
    virtual std::optional<QString> displayName(const QString &path) const = 0;
    // Other texts the entry is found by, besides its name; none by default.
    virtual QStringList otherNames(const QString &path) const
    {
        Q_UNUSED(path);
        return {};
    }
    // How deep below a root (1 = directly inside) entries are looked for.
    virtual int maxDepth() const { return 3; }
};

} // namespace tessary

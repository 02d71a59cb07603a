#pragma once

#include "core/platform/application_catalog.h"

namespace tessary {

// Applications as the desktop entries of the XDG data dirs, read through GIO:
// only entries of type Application that the desktop would show, under their
// localized Name. Entries shadow one another by desktop-file id, as the XDG
// menu rules say, so a user's copy overrides (or hides) the system's.
class DesktopEntryCatalog final : public ApplicationCatalog {
public:
    // $XDG_DATA_HOME/applications, then each of $XDG_DATA_DIRS/applications,
    // then the Flatpak and Snap export folders missing from those.
    QStringList defaultRoots() const override;
    QString entrySuffix() const override;
    // "kde4/foo.desktop" below a root has the id "kde4-foo.desktop".
    QString entryKey(const QString &root, const QString &path) const override;
    std::optional<QString> displayName(const QString &path) const override;
    // The untranslated Name when it differs, the localized GenericName and Keywords.
    QStringList otherNames(const QString &path) const override;
    // Wine files its programs in folders per vendor and product.
    int maxDepth() const override { return 6; }
};

} // namespace tessary

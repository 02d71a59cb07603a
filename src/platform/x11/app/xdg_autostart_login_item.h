#pragma once

#include "core/platform/login_item.h"

namespace tessary {

// Opening at login through an XDG autostart entry, "tessary.desktop" in
// $XDG_CONFIG_HOME/autostart, which every desktop session starts. The entry
// runs `tessary` from the PATH when the running program is that installed
// one, else this program's absolute path (a build tree, a bundle).
class XdgAutostartLoginItem final : public LoginItem {
public:
    // The user's autostart folder and this program.
    XdgAutostartLoginItem();
    XdgAutostartLoginItem(QString autostartDirectory, QString programPath, QString installedPath);

    Status status() const override;
    std::optional<QString> set(bool enabled) override;

    QString entryPath() const;
    // The Exec value: a bare name for the installed program, else the quoted path.
    QString execLine() const;

private:
    QString m_directory;
    QString m_program;
    QString m_installed;
};

} // namespace tessary

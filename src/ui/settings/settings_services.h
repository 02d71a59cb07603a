#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace tessary {

class Accessibility;
class AppSettings;
class ClipboardStore;
class KeyPositions;
class LoginItem;
class SnippetStore;
class Workspace;

// What the settings window edits and asks. Everything must outlive the window.
struct SettingsServices {
    AppSettings &settings;
    ClipboardStore &clipboard;
    SnippetStore &snippets;
    Accessibility &accessibility;
    LoginItem &loginItem;
    const Workspace &workspace;
    const KeyPositions &keyPositions;
    // True while a shortcut is being recorded: the owner releases every hot key
    // and registers them again afterwards.
    std::function<void(bool)> setSuspended;
    // The installed application's name for an application id, when known.
    std::function<std::optional<QString>(const QString &id)> applicationName;
};

} // namespace tessary

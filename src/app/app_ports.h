#pragma once

#include <memory>

namespace tessary {

class Accessibility;
class ApplicationCatalog;
class DesktopOpener;
class FileSearchBackend;
class HotKeyService;
class KeyPositions;
class KeyValueStore;
class KeystrokeSender;
class PanelKeyboard;
class LoginItem;
class MouseMonitor;
class Pasteboard;
class ProcessLauncher;
class Screens;
class SessionControl;
class Workspace;

// The platform as the application controller sees it. Every port must
// outlive the controller.
struct AppPorts {
    Accessibility &accessibility;
    Workspace &workspace;
    Screens &screens;
    MouseMonitor &mouse;
    HotKeyService &hotKeys;
    Pasteboard &pasteboard;
    KeystrokeSender &keystrokes;
    KeyValueStore &defaults;
    DesktopOpener &opener;
    FileSearchBackend &fileSearch;
    ProcessLauncher &processes;
    std::shared_ptr<const ApplicationCatalog> catalog;
    const KeyPositions &keyPositions;
    LoginItem &loginItem;
    // Null where the platform's own window activation is enough (tests).
    PanelKeyboard *panelKeyboard = nullptr;
    // Runs the launcher's system commands; none are offered without it.
    SessionControl *session = nullptr;
};

} // namespace tessary

#pragma once

#include "core/clipboard/clip_item.h"

#include <QString>
#include <QUrl>

#include <functional>

namespace tessary {

class AppIndex;
class DesktopOpener;

// The six ways launcher rows act on the outside world, supplied by the
// application controller. Each starts as a no-op (`confirm` as a refusal), so
// a partly filled record never crashes a row.
struct LauncherActions {
    // An application (its AppEntry url), a file or a web address.
    std::function<void(const QUrl &url)> open = [](const QUrl &) {};
    // Show the item in the file manager.
    std::function<void(const QUrl &url)> reveal = [](const QUrl &) {};
    // Put the text on the pasteboard and paste it into the previous application.
    std::function<void(const QString &text)> paste = [](const QString &) {};
    std::function<void(const ClipItem &item)> pasteClip = [](const ClipItem &) {};
    // Put the text on the pasteboard only.
    std::function<void(const QString &text)> copy = [](const QString &) {};
    // Ask the question; true only when the user confirms.
    std::function<bool(const QString &question)> confirm = [](const QString &) { return false; };

    // `open` and `reveal` through `opener`: a URL naming an indexed application
    // launches it, other local files open with their default handler, other
    // URLs with the handler of their scheme. Both must outlive the record.
    void openThrough(DesktopOpener &opener, const AppIndex &index);
};

} // namespace tessary

#pragma once

#include <QHashFunctions>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace tessary {

// One indexed application. `url` locates its bundle (macOS) or desktop entry
// (Linux); `fileName` is that file's name without its suffix.
struct AppEntry {
    QString name;
    QString fileName;
    QUrl url;
    // Further texts the application is found by (its untranslated name, its
    // generic name, its keywords), ranked below a match of `name`.
    QStringList otherNames = {};

    QString path() const { return url.toLocalFile(); }

    friend bool operator==(const AppEntry &, const AppEntry &) = default;
};

inline size_t qHash(const AppEntry &entry, size_t seed = 0)
{
    return qHashMulti(seed, entry.name, entry.fileName, entry.url, entry.otherNames);
}

} // namespace tessary

#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace tessary {

// Finds the installed desktop entry of a window class: an entry named after
// the class or instance (any case), else one whose StartupWMClass names it.
// Answers are cached for the life of the object. Main thread only.
class DesktopEntryIds {
public:
    struct Entry {
        // The desktop-file id without its ".desktop" suffix.
        QString id;
        QString name;
    };

    std::optional<Entry> find(const QByteArray &instance, const QByteArray &className);

private:
    std::optional<Entry> lookUp(const QByteArray &instance, const QByteArray &className);
    void indexStartupClasses();

    QHash<QByteArray, std::optional<Entry>> m_cache;
    // Lower-cased StartupWMClass → entry; built on the first miss.
    std::optional<QHash<QByteArray, Entry>> m_byStartupClass;
};

} // namespace tessary

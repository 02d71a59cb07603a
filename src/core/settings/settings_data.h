#pragma once

#include "core/settings/web_search.h"
#include "core/shortcuts/key_combo.h"

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace tessary {

// The user's settings as one record; stored as one JSON object whose member
// names are the field names.
struct SettingsData {
    // Custom shortcuts by hot action raw value; only those differing from the default.
    QMap<QString, KeyCombo> shortcuts;
    // Raw values of actions whose shortcut the user cleared.
    QSet<QString> disabled;
    double gap = 0;
    bool dragSnap = true;
    bool clipboardEnabled = true;
    int clipboardMax = 200;
    int clipboardRetentionDays = 30;
    QStringList clipboardExcluded = defaultClipboardExcluded();
    bool launcherFiles = true;
    bool launcherSystem = true;
    QList<WebSearch> webSearches = WebSearch::defaults();

    static QStringList defaultClipboardExcluded();

    QByteArray toJson() const;
    // Strict: all eleven members present and typed; otherwise nothing.
    static std::optional<SettingsData> fromJson(const QByteArray &json);

    friend bool operator==(const SettingsData &, const SettingsData &) = default;
};

} // namespace tessary

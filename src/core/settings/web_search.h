#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

namespace tessary {

// A launcher web-search keyword; "{query}" in `url` stands for the typed text.
struct WebSearch {
    QUuid id;
    QString keyword;
    QString name;
    QString url;

    // The seven built-in searches; their ids are fresh per process, stable within it.
    static const QList<WebSearch> &defaults();

    QJsonObject toJson() const;
    // Strict: all four members present as strings, `id` a valid UUID.
    static std::optional<WebSearch> fromJson(const QJsonValue &value);

    friend bool operator==(const WebSearch &, const WebSearch &) = default;
};

} // namespace tessary

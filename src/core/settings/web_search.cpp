#include "core/settings/web_search.h"

#include "core/json/strict_json.h"

namespace tessary {

const QList<WebSearch> &WebSearch::defaults()
{
    static const QList<WebSearch> searches = [] {
        auto make = [](const char *keyword, const char *name, const char *url) {
            return WebSearch{
                QUuid::createUuid(), QString::fromLatin1(keyword), QString::fromLatin1(name), QString::fromLatin1(url)};
        };
        return QList<WebSearch>{
            make("g", "Google", "https://www.google.com/search?q={query}"),
            make("ddg", "DuckDuckGo", "https://duckduckgo.com/?q={query}"),
            make("yt", "YouTube", "https://www.youtube.com/results?search_query={query}"),
            make("gh", "GitHub", "https://github.com/search?q={query}"),
            make("w", "Wikipedia", "https://en.wikipedia.org/w/index.php?search={query}"),
            make("maps", "Apple Maps", "https://maps.apple.com/?q={query}"),
            make("so", "Stack Overflow", "https://stackoverflow.com/search?q={query}"),
        };
    }();
    return searches;
}

QJsonObject WebSearch::toJson() const
{
    return {{QLatin1String("id"), StrictJson::uuidText(id)}, {QLatin1String("keyword"), keyword},
        {QLatin1String("name"), name}, {QLatin1String("url"), url}};
}

std::optional<WebSearch> WebSearch::fromJson(const QJsonValue &value)
{
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject object = value.toObject();
    auto id = StrictJson::uuid(object, "id");
    auto keyword = StrictJson::string(object, "keyword");
    auto name = StrictJson::string(object, "name");
    auto url = StrictJson::string(object, "url");
    if (!id || !keyword || !name || !url)
        return std::nullopt;
    return WebSearch{*id, *keyword, *name, *url};
}

} // namespace tessary

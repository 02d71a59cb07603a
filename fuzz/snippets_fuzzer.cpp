#include "core/json/strict_json.h"
#include "core/settings/snippet.h"
#include "fuzz/support/fuzz_target.h"

#include <QDateTime>
#include <QJsonArray>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using tessary::Snippet;
    const auto array = tessary::StrictJson::parseArray(tessary::fuzzBytes(data, size));
    if (!array)
        return 0;
    for (const QJsonValue &value : *array) {
        const auto snippet = Snippet::fromJson(value);
        if (!snippet)
            continue;
        TESSARY_FUZZ_REQUIRE(Snippet::fromJson(snippet->toJson()) == snippet);
        snippet->expanded(snippet->name, QDateTime::fromSecsSinceEpoch(0), QLocale::c());
    }
    return 0;
}

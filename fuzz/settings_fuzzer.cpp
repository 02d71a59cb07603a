#include "core/settings/settings_data.h"
#include "fuzz/support/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using tessary::SettingsData;
    const auto settings = SettingsData::fromJson(tessary::fuzzBytes(data, size));
    if (settings)
        TESSARY_FUZZ_REQUIRE(SettingsData::fromJson(settings->toJson()) == settings);
    return 0;
}

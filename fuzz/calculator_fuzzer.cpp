#include "core/launcher/calculator.h"
#include "fuzz/support/fuzz_target.h"

#include <cmath>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(tessary::fuzzBytes(data, size));
    if (const auto value = tessary::Calculator::evaluate(text)) {
        TESSARY_FUZZ_REQUIRE(std::isfinite(*value));
        tessary::Calculator::format(*value, true);
    }
    tessary::Calculator::forLauncher(text);
    return 0;
}

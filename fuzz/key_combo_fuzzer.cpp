#include "core/shortcuts/key_combo.h"
#include "fuzz/support/fuzz_target.h"

#include <QJsonDocument>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using tessary::KeyCombo;
    const QJsonDocument document = QJsonDocument::fromJson(tessary::fuzzBytes(data, size));
    const auto combo = KeyCombo::fromJson(document.object());
    if (combo) {
        combo->display();
        TESSARY_FUZZ_REQUIRE(KeyCombo::fromJson(combo->toJson()) == combo);
    }
    return 0;
}

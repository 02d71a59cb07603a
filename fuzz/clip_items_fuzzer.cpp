#include "core/clipboard/clip_item.h"
#include "fuzz/support/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using tessary::ClipItem;
    const auto items = ClipItem::listFromJson(tessary::fuzzBytes(data, size));
    if (!items)
        return 0;
    for (const ClipItem &item : *items) {
        item.title();
        TESSARY_FUZZ_REQUIRE(!item.imageFile || ClipItem::isImageFileName(*item.imageFile));
    }
    TESSARY_FUZZ_REQUIRE(ClipItem::listFromJson(ClipItem::listToJson(*items)) == items);
    return 0;
}

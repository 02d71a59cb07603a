#pragma once

#include <QByteArray>

#include <cstddef>
#include <cstdint>

// The libFuzzer entry points each target defines; the corpus runner calls
// them too, so saved inputs run as ordinary tests without a fuzzing build.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace tessary {

inline QByteArray fuzzBytes(const std::uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
}

// A decoder's output encodes to something it decodes again to the same value.
#define TESSARY_FUZZ_REQUIRE(condition)                                                                                \
    do {                                                                                                               \
        if (!(condition))                                                                                              \
            __builtin_trap();                                                                                          \
    } while (false)

} // namespace tessary

#pragma once

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <cstdint>
#include <optional>

namespace tessary {

// A keyboard shortcut in the portable stored form: an ANSI key position code
// and a modifier mask (control 4096, option 2048, shift 512, command 256).
// "No shortcut" is an empty std::optional<KeyCombo>, never a special value.
struct KeyCombo {
    static constexpr std::uint32_t control = 4096;
    static constexpr std::uint32_t option = 2048;
    static constexpr std::uint32_t shift = 512;
    static constexpr std::uint32_t command = 256;

    // Bits of a key event's modifier flag set, as carbonModifiers() reads them.
    struct EventFlags {
        static constexpr std::uint64_t shift = 1ull << 17;
        static constexpr std::uint64_t control = 1ull << 18;
        static constexpr std::uint64_t option = 1ull << 19;
        static constexpr std::uint64_t command = 1ull << 20;
    };

    // How a desktop writes shortcuts: macOS with symbols ("⌃⌥←"), Linux
    // desktops with words joined by "+" ("Ctrl+Alt+Left", Super for command).
    enum class Notation { symbols, words };
#ifdef Q_OS_MACOS
    static constexpr Notation nativeNotation = Notation::symbols;
#else
    static constexpr Notation nativeNotation = Notation::words;
#endif

    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;

    // Modifiers in the fixed order control, option, shift, command, then the
    // key's name ("Key <code>" for codes missing from keyNames()).
    QString display(Notation notation = nativeNotation) const;

    static const QHash<std::uint32_t, QString> &keyNames();
    // The key's name in words notation: keyNames() with words for the symbols.
    static QString keyWord(std::uint32_t keyCode);
    static std::uint32_t carbonModifiers(std::uint64_t eventFlags);
    static bool isFunctionKey(std::uint32_t keyCode);

    QJsonObject toJson() const;
    // Strict: both members present and unsigned 32-bit integers.
    static std::optional<KeyCombo> fromJson(const QJsonValue &value);

    friend bool operator==(const KeyCombo &, const KeyCombo &) = default;
};

inline size_t qHash(const KeyCombo &combo, size_t seed = 0) { return qHashMulti(seed, combo.keyCode, combo.modifiers); }

} // namespace tessary

template <> struct std::hash<tessary::KeyCombo> {
    size_t operator()(const tessary::KeyCombo &combo) const noexcept { return tessary::qHash(combo); }
};

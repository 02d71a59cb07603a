#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace tessary::UnicodeText {

// Tab or a Unicode space separator (general category Zs); line breaks are not.
bool isHorizontalWhitespace(char32_t codePoint);

// The code point `text` starts with (a lone surrogate stands for itself); `text` must not be empty.
char32_t firstCodePoint(QStringView text);

// `text` without leading and trailing horizontal whitespace.
QStringView trimmedHorizontal(QStringView text);

// The user-perceived characters (extended grapheme clusters) of `text`, as
// views into it. Callable from any thread.
std::vector<QStringView> graphemes(QStringView text);

} // namespace tessary::UnicodeText

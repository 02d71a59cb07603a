#include "platform/x11/windows/key_positions.h"

#include <QHash>

namespace tessary::KeyPositions {
namespace {

const QHash<quint32, quint32> &table()
{
    // clang-format off
    static const QHash<quint32, quint32> positions = {
        // arrows
        {123, 0xff51}, {124, 0xff53}, {126, 0xff52}, {125, 0xff54},
        // Return, BackSpace, space, Tab, Escape, Delete
        {36, 0xff0d}, {51, 0xff08}, {49, 0x0020}, {48, 0xff09}, {53, 0xff1b}, {117, 0xffff},
        // Home, End, Prior, Next
        {115, 0xff50}, {119, 0xff57}, {116, 0xff55}, {121, 0xff56},
        // - = [ ] ; ' , . / \ `
        {27, 0x002d}, {24, 0x003d}, {33, 0x005b}, {30, 0x005d}, {41, 0x003b}, {39, 0x0027}, {43, 0x002c},
        {47, 0x002e}, {44, 0x002f}, {42, 0x005c}, {50, 0x0060},
        // a … z
        {0, 'a'}, {11, 'b'}, {8, 'c'}, {2, 'd'}, {14, 'e'}, {3, 'f'}, {5, 'g'}, {4, 'h'}, {34, 'i'}, {38, 'j'},
        {40, 'k'}, {37, 'l'}, {46, 'm'}, {45, 'n'}, {31, 'o'}, {35, 'p'}, {12, 'q'}, {15, 'r'}, {1, 's'},
        {17, 't'}, {32, 'u'}, {9, 'v'}, {13, 'w'}, {7, 'x'}, {16, 'y'}, {6, 'z'},
        // 0 … 9
        {29, '0'}, {18, '1'}, {19, '2'}, {20, '3'}, {21, '4'}, {23, '5'}, {22, '6'}, {26, '7'}, {28, '8'},
        {25, '9'},
        // F1 … F12
        {122, 0xffbe}, {120, 0xffbf}, {99, 0xffc0}, {118, 0xffc1}, {96, 0xffc2}, {97, 0xffc3}, {98, 0xffc4},
        {100, 0xffc5}, {101, 0xffc6}, {109, 0xffc7}, {103, 0xffc8}, {111, 0xffc9},
    };
    // clang-format on
    return positions;
}

} // namespace

std::optional<quint32> keysym(quint32 keyCode)
{
    const auto found = table().constFind(keyCode);
    if (found == table().cend())
        return std::nullopt;
    return *found;
}

} // namespace tessary::KeyPositions

#include "wnd/keyCodes.h"

#include <QtCore/Qt>

namespace vm {
namespace {

struct CodePair {
    int from;
    int to;
};

// The kernel's numbers are positions on the keyboard, and so are the native codes.
constexpr CodePair kEvdevCodes[] = {
    {1, 0x35},   {2, 0x12},   {3, 0x13},   {4, 0x14},   {5, 0x15},   {6, 0x17},   {7, 0x16},
    {8, 0x1A},   {9, 0x1C},   {10, 0x19},  {11, 0x1D},  {12, 0x1B},  {13, 0x18},  {14, 0x33},
    {15, 0x30},  {16, 0x0C},  {17, 0x0D},  {18, 0x0E},  {19, 0x0F},  {20, 0x11},  {21, 0x10},
    {22, 0x20},  {23, 0x22},  {24, 0x1F},  {25, 0x23},  {26, 0x21},  {27, 0x1E},  {28, 0x24},
    {30, 0x00},  {31, 0x01},  {32, 0x02},  {33, 0x03},  {34, 0x05},  {35, 0x04},  {36, 0x26},
    {37, 0x28},  {38, 0x25},  {39, 0x29},  {40, 0x27},  {41, 0x32},  {43, 0x2A},  {44, 0x06},
    {45, 0x07},  {46, 0x08},  {47, 0x09},  {48, 0x0B},  {49, 0x2D},  {50, 0x2E},  {51, 0x2B},
    {52, 0x2F},  {53, 0x2C},  {55, 0x43},  {57, 0x31},  {59, 0x7A},  {60, 0x78},  {61, 0x63},
    {62, 0x76},  {63, 0x60},  {64, 0x61},  {65, 0x62},  {66, 0x64},  {67, 0x65},  {68, 0x6D},
    {69, 0x47},  {71, 0x59},  {72, 0x5B},  {73, 0x5C},  {74, 0x4E},  {75, 0x56},  {76, 0x57},
    {77, 0x58},  {78, 0x45},  {79, 0x53},  {80, 0x54},  {81, 0x55},  {82, 0x52},  {83, 0x41},
    {86, 0x0A},  {87, 0x67},  {88, 0x6F},  {96, 0x4C},  {98, 0x4B},  {102, 0x73}, {103, 0x7E},
    {104, 0x74}, {105, 0x7B}, {106, 0x7C}, {107, 0x77}, {108, 0x7D}, {109, 0x79}, {110, 0x72},
    {111, 0x75}, {117, 0x51},
};

constexpr CodePair kQtKeys[] = {
    {Qt::Key_Escape, 0x35},    {Qt::Key_Backspace, 0x33},   {Qt::Key_Tab, 0x30},
    {Qt::Key_Backtab, 0x30},   {Qt::Key_Return, 0x24},      {Qt::Key_Space, 0x31},
    {Qt::Key_Enter, 0x4C},     {Qt::Key_Home, 0x73},        {Qt::Key_End, 0x77},
    {Qt::Key_Left, 0x7B},      {Qt::Key_Right, 0x7C},       {Qt::Key_Up, 0x7E},
    {Qt::Key_Down, 0x7D},      {Qt::Key_PageUp, 0x74},      {Qt::Key_PageDown, 0x79},
    {Qt::Key_Insert, 0x72},    {Qt::Key_Delete, 0x75},      {Qt::Key_Minus, 0x1B},
    {Qt::Key_Equal, 0x18},     {Qt::Key_BracketLeft, 0x21}, {Qt::Key_BracketRight, 0x1E},
    {Qt::Key_Semicolon, 0x29}, {Qt::Key_Apostrophe, 0x27},  {Qt::Key_QuoteLeft, 0x32},
    {Qt::Key_Backslash, 0x2A}, {Qt::Key_Comma, 0x2B},       {Qt::Key_Period, 0x2F},
    {Qt::Key_Slash, 0x2C},
};

constexpr int kLetterKeys[] = {0x00, 0x0B, 0x08, 0x02, 0x0E, 0x03, 0x05, 0x04, 0x22,
                               0x26, 0x28, 0x25, 0x2E, 0x2D, 0x1F, 0x23, 0x0C, 0x0F,
                               0x01, 0x11, 0x20, 0x09, 0x0D, 0x07, 0x10, 0x06};
constexpr int kDigitKeys[] = {0x1D, 0x12, 0x13, 0x14, 0x15, 0x17, 0x16, 0x1A, 0x1C, 0x19};
constexpr int kKeypadDigits[] = {0x52, 0x53, 0x54, 0x55, 0x56, 0x57, 0x58, 0x59, 0x5B, 0x5C};
constexpr int kFunctionKeys[] = {0x7A, 0x78, 0x63, 0x76, 0x60, 0x61,
                                 0x62, 0x64, 0x65, 0x6D, 0x67, 0x6F};
constexpr int kFunctionKeyCode = 0x10;

// The keys that have a code of their own whatever they type; letters, digits and function keys
// follow from the tables above.
constexpr CodePair kVirtualKeys[] = {
    {0x33, 0x08}, {0x7D, 0x1F}, {0x77, 0x04}, {0x73, 0x01}, {0x7B, 0x1C}, {0x24, 0x0D},
    {0x7C, 0x1D}, {0x31, 0x20}, {0x30, 0x09}, {0x7E, 0x1E}, {0x74, 0x0B}, {0x79, 0x0C},
};

template <std::size_t N>
int Lookup(const CodePair (&table)[N], int from, int otherwise) {
    for (const CodePair& pair : table)
        if (pair.from == from) return pair.to;
    return otherwise;
}

template <std::size_t N>
int IndexIn(const int (&table)[N], int code) {
    for (std::size_t i = 0; i < N; ++i)
        if (table[i] == code) return static_cast<int>(i);
    return -1;
}

} // namespace

int NativeKeyFromEvdev(int code) {
    return Lookup(kEvdevCodes, code, kUnknownKey);
}

int NativeKeyFromQtKey(int key, bool isKeypad) {
    if (key >= Qt::Key_A && key <= Qt::Key_Z) return kLetterKeys[key - Qt::Key_A];
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return isKeypad ? kKeypadDigits[key - Qt::Key_0] : kDigitKeys[key - Qt::Key_0];
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return kFunctionKeys[key - Qt::Key_F1];
    return Lookup(kQtKeys, key, kUnknownKey);
}

int VirtualKeyOf(int nativeCode, int character) {
    if (const int letter = IndexIn(kLetterKeys, nativeCode); letter >= 0) return 'A' + letter;
    if (const int digit = IndexIn(kDigitKeys, nativeCode); digit >= 0) return '0' + digit;
    if (IndexIn(kFunctionKeys, nativeCode) >= 0) return kFunctionKeyCode;
    return Lookup(kVirtualKeys, nativeCode, character);
}

} // namespace vm

#include "script/VirtualKeys.h"

#include <Qt>

namespace kestrune {

namespace {

struct KeyRow {
    int nCode;
    int nKey;
    char16_t text = 0;
};
constexpr KeyRow c_aKeys[] = {
    {8, Qt::Key_Backspace, u'\b'}, {9, Qt::Key_Tab, u'\t'}, {13, Qt::Key_Return, u'\r'}, {16, Qt::Key_Shift},
    {17, Qt::Key_Control}, {18, Qt::Key_Alt}, {19, Qt::Key_Pause}, {20, Qt::Key_CapsLock}, {21, Qt::Key_Hangul},
    {27, Qt::Key_Escape, 27}, {32, Qt::Key_Space, u' '}, {33, Qt::Key_PageUp}, {34, Qt::Key_PageDown}, {35, Qt::Key_End},
    {36, Qt::Key_Home}, {37, Qt::Key_Left}, {38, Qt::Key_Up}, {39, Qt::Key_Right}, {40, Qt::Key_Down}, {44, Qt::Key_Print},
    {45, Qt::Key_Insert}, {46, Qt::Key_Delete, 127}, {106, Qt::Key_Asterisk, u'*'}, {107, Qt::Key_Plus, u'+'},
    {109, Qt::Key_Minus, u'-'}, {110, Qt::Key_Period, u'.'}, {111, Qt::Key_Slash, u'/'}, {186, Qt::Key_Semicolon, u';'},
    {187, Qt::Key_Equal, u'='}, {188, Qt::Key_Comma, u','}, {189, Qt::Key_Minus, u'-'}, {190, Qt::Key_Period, u'.'},
    {191, Qt::Key_Slash, u'/'}, {192, Qt::Key_QuoteLeft, u'`'}, {219, Qt::Key_BracketLeft, u'['},
    {220, Qt::Key_Backslash, u'\\'}, {221, Qt::Key_BracketRight, u']'}, {222, Qt::Key_Apostrophe, u'\''},
};

} // namespace

std::optional<ToolkitKey> KeyOfVirtualCode(int nCode)
{
    if (nCode >= '0' && nCode <= '9')
        return ToolkitKey{nCode, QString(QChar(nCode))};
    if (nCode >= 'A' && nCode <= 'Z')
        return ToolkitKey{nCode, QString(QChar(nCode)).toLower()};
    if (nCode >= 96 && nCode <= 105) // the number pad
        return ToolkitKey{Qt::Key_0 + nCode - 96, QString(QChar(u'0' + nCode - 96))};
    if (nCode >= 112 && nCode <= 135)
        return ToolkitKey{Qt::Key_F1 + nCode - 112, {}};
    for (const KeyRow& row : c_aKeys)
        if (row.nCode == nCode)
            return ToolkitKey{row.nKey, row.text ? QString(QChar(row.text)) : QString()};
    return std::nullopt;
}

} // namespace kestrune

#include "view/KeyCodes.h"

#include "tools/ToolView.h"

#include <Qt>
#include <QtGlobal>

namespace kestrune {

namespace {

struct KeyRow {
    int nVirtual;
    int nQt;
};

// Space, digits and letters have the same number on both sides; the function keys run in parallel.
constexpr KeyRow c_aKeys[] = {
    {VK_BACK, Qt::Key_Backspace}, {VK_TAB, Qt::Key_Tab},      {VK_RETURN, Qt::Key_Return}, {VK_RETURN, Qt::Key_Enter},
    {VK_SHIFT, Qt::Key_Shift},    {VK_CONTROL, Qt::Key_Control}, {VK_MENU, Qt::Key_Alt},   {VK_ESCAPE, Qt::Key_Escape},
    {VK_PRIOR, Qt::Key_PageUp},   {VK_NEXT, Qt::Key_PageDown}, {VK_END, Qt::Key_End},      {VK_HOME, Qt::Key_Home},
    {VK_LEFT, Qt::Key_Left},      {VK_UP, Qt::Key_Up},        {VK_RIGHT, Qt::Key_Right},   {VK_DOWN, Qt::Key_Down},
    {VK_INSERT, Qt::Key_Insert},  {VK_DELETE, Qt::Key_Delete},
};

constexpr bool IsSame(int n)
{
    return n == VK_SPACE || (n >= '0' && n <= '9') || (n >= 'A' && n <= 'Z');
}

constexpr int c_nFunctionKeys = 24;

} // namespace

int VirtualKeyOf(int nQtKey)
{
    if (IsSame(nQtKey))
        return nQtKey;
    if (nQtKey >= Qt::Key_F1 && nQtKey < Qt::Key_F1 + c_nFunctionKeys)
        return VK_F1 + nQtKey - Qt::Key_F1;
    for (const KeyRow& row : c_aKeys)
        if (row.nQt == nQtKey)
            return row.nVirtual;
    return 0;
}

int QtKeyOf(int nVirtualKey)
{
    if (IsSame(nVirtualKey))
        return nVirtualKey;
    if (nVirtualKey >= VK_F1 && nVirtualKey < VK_F1 + c_nFunctionKeys)
        return Qt::Key_F1 + nVirtualKey - VK_F1;
    for (const KeyRow& row : c_aKeys)
        if (row.nVirtual == nVirtualKey)
            return row.nQt;
    return 0;
}

} // namespace kestrune

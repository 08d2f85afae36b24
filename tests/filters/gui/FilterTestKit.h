#pragma once

#include "base/Profile.h"
#include "doc/PaintImage.h"
#include "filters/gui/FilterDialog.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>

namespace kestrune {

/// A picture with soft and hard places in all colours; the same for the same size.
inline void FillWithPattern(LBitmapBase& bitmap)
{
    unsigned nState = 12345;
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        std::uint8_t* p = bitmap.WriteRow(y);
        for (int x = 0; x < bitmap.GetWidth(); x++, p += 3) {
            nState = nState * 1664525 + 1013904223;
            p[0] = static_cast<std::uint8_t>(x * 3 + (nState >> 28));
            p[1] = static_cast<std::uint8_t>(y * 2 + x / 2);
            p[2] = static_cast<std::uint8_t>((x / 16 + y / 16) % 2 ? 230 : 40 + (nState >> 27));
        }
    }
}

inline std::unique_ptr<CPaintImage> MakePicture(int nWidth, int nHeight)
{
    auto pImage = std::make_unique<CPaintImage>();
    pImage->Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
    FillWithPattern(pImage->m_Bitmap);
    pImage->m_BaseBitmap.Copy(pImage->m_Bitmap);
    RecordFirstState(*pImage, UNDO_NEW);
    return pImage;
}

/// Selects a rectangle, which may reach beyond the picture, with a mask that fades from left to right.
inline void SelectRect(CPaintImage& image, const CRect& rc)
{
    image.AllocateMask();
    std::memset(image.m_pMask.get(), 0, static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight);
    const CRect rcSeen = Intersect(rc, {0, 0, image.m_nWidth, image.m_nHeight});
    for (int y = rcSeen.top; y < rcSeen.bottom; y++)
        for (int x = rcSeen.left; x < rcSeen.right; x++)
            image.m_pMask[static_cast<std::size_t>(y) * image.m_nWidth + x]
                = static_cast<std::uint8_t>((x - rc.left) * 255 / rc.Width());
    image.InvalidateMaskBounds();
    image.m_nFloatX = rc.left;
    image.m_nFloatY = rc.top;
    image.m_nFloatW = rc.Width();
    image.m_nFloatH = rc.Height();
    image.m_rcFloat = image.m_rcFloatStart = rcSeen;
    image.CaptureFloat(rc.left, rc.top, rc.Width(), rc.Height());
    image.m_bFloatReady = true;
    image.m_bSelection = true;
}

inline bool SameBitmap(const LBitmapBase& a, const LBitmapBase& b)
{
    if (a.GetWidth() != b.GetWidth() || a.GetHeight() != b.GetHeight())
        return false;
    for (int y = 0; y < a.GetHeight(); y++)
        if (std::memcmp(a.Row(y), b.Row(y), a.GetRowBytes()) != 0)
            return false;
    return true;
}

using Keys = QList<QPair<QString, QString>>;

/// Answers every dialog of the program with these values while it lives, as a script does.
class CDialogDriver {
public:
    explicit CDialogDriver(Keys keys, bool bOk = true)
    {
        CPaintDialog::SetDriver([this, keys = std::move(keys), bOk](CPaintDialog& dialog) {
            m_nDialogs++;
            for (const auto& [strKey, strValue] : keys) {
                const std::optional<QString> error = dialog.SetKey(strKey, strValue);
                EXPECT_EQ(error, std::nullopt) << strKey.toStdString() << ": " << (error ? error->toStdString() : "");
            }
            bOk ? dialog.accept() : dialog.reject();
            return dialog.result();
        });
    }
    ~CDialogDriver() { CPaintDialog::SetDriver({}); }
    CDialogDriver(const CDialogDriver&) = delete;
    CDialogDriver& operator=(const CDialogDriver&) = delete;

    int m_nDialogs = 0;
};

} // namespace kestrune

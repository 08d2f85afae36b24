#pragma once

#include "base/Messages.h"
#include "doc/PaintImage.h"
#include "tools/PaintTool.h"
#include "tools/SelectionActs.h"
#include "tools/ToolRegistry.h"
#include "undo/UndoStack.h"

#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace kestrune::test {

/// A view of one picture with the geometry of the real one, whose surroundings are the settings of a test.
class CPictureView : public CToolView, public CImageSite {
public:
    CPictureView(int nWidth, int nHeight)
    {
        m_image.Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
        m_image.SetSite(this);
        // A pattern in which every place differs from its neighbours, and no pixel is the background's white.
        for (int y = 0; y < nHeight; y++)
            for (int x = 0; x < nWidth; x++) {
                std::uint8_t* p = m_image.m_Bitmap.WriteRow(y) + x * 3;
                p[0] = static_cast<std::uint8_t>(x * 5 + y);
                p[1] = static_cast<std::uint8_t>(x * 3 + y * 7);
                p[2] = static_cast<std::uint8_t>((x ^ y) & 127);
            }
        m_image.m_BaseBitmap.Copy(m_image.m_Bitmap);
        RecordFirstState(m_image, 2);
        g_pActiveToolView = this;
    }
    ~CPictureView() override { g_pActiveToolView = nullptr; }

    /// What a rectangle tool leaves behind, with an opaque mask or one that fades from left to right.
    void Select(const CRect& rc, bool bFade = false)
    {
        std::memset(m_image.m_pMask.get(), 0, static_cast<std::size_t>(m_image.m_nWidth) * m_image.m_nHeight);
        for (int y = rc.top; y < rc.bottom; y++)
            for (int x = rc.left; x < rc.right; x++)
                m_image.m_pMask[y * m_image.m_nWidth + x] = static_cast<std::uint8_t>(bFade ? 255 * (x - rc.left + 1) / rc.Width() : 255);
        m_image.InvalidateMaskBounds();
        FinishSelection(m_image, rc);
    }

    CPaintImage* GetImage() const override { return m_bHasImage ? const_cast<CPaintImage*>(&m_image) : nullptr; }
    float GetZoom() const override { return m_fZoom; }
    CPoint GetImageOrigin() const override
    {
        const int w = static_cast<int>(m_image.m_nWidth * m_fZoom), h = static_cast<int>(m_image.m_nHeight * m_fZoom);
        return {m_client.cx >= w ? (m_client.cx - w) / 2 : 0, m_client.cy >= h ? (m_client.cy - h) / 2 : 0};
    }
    CPoint ClientToImage(CPoint pt) const override
    {
        const CPoint o = GetImageOrigin();
        return {static_cast<int>((pt.x + m_scroll.x - o.x) / static_cast<double>(m_fZoom)), static_cast<int>((pt.y + m_scroll.y - o.y) / static_cast<double>(m_fZoom))};
    }
    CPoint ImageToClient(CPoint pt) const override
    {
        const CPoint o = GetImageOrigin();
        return {static_cast<int>(pt.x * static_cast<double>(m_fZoom)) - m_scroll.x + o.x, static_cast<int>(pt.y * static_cast<double>(m_fZoom)) - m_scroll.y + o.y};
    }
    CSize GetClientSize() const override { return m_client; }
    CPoint GetScrollPosition() const override { return m_scroll; }
    void ScrollToPosition(CPoint pt) override { m_scroll = pt; }
    bool HasHScroll() const override { return true; }
    bool HasVScroll() const override { return true; }
    void ZoomAt(bool, CPoint) override {}
    void SetCapture() override { m_bCapture = true; }
    void ReleaseCapture() override { m_bCapture = false; }
    bool HasCapture() const override { return m_bCapture; }
    void SetToolCursor(int nCursor) override { m_nCursor = nCursor; }
    void SetOverlay(ToolOverlay overlay) override { m_overlay = std::move(overlay); }
    void StartTimer(int, int) override {}
    void KillTimer(int) override {}
    void RepaintRect(const CRect&) override {}
    void RepaintAll() override {}
    void StopOutline() override { m_nOutlineStopped++; }
    void StartOutline() override { m_nOutlineStopped--; }
    int FloatOpacity() const override { return m_nOpacity; }
    int MoveMode() const override { return m_nMoveMode; }

    // Events, at points of the picture.
    void Press(CPoint pt) { Tool().OnLButtonDown(*this, MK_LBUTTON, ImageToClient(pt)); }
    void Move(CPoint pt) { Tool().OnMouseMove(*this, MK_LBUTTON, ImageToClient(pt)); }
    void Release(CPoint pt) { Tool().OnLButtonUp(*this, 0, ImageToClient(pt)); }
    void Drag(CPoint from, CPoint to)
    {
        Press(from);
        Move({(from.x + to.x) / 2, (from.y + to.y) / 2});
        Move(to);
        Release(to);
    }
    void DoubleClick(CPoint pt)
    {
        Press(pt);
        Release(pt);
        Tool().OnLButtonDblClk(*this, MK_LBUTTON, ImageToClient(pt));
        Release(pt);
    }
    bool Key(int nKey, unsigned nFlags = 0) { return Tool().OnKeyDown(nKey, 1, nFlags); }
    void Use(int nTool) { SwitchTool(nTool, 0); }
    static CPaintTool& Tool() { return *FindTool(g_nCurrentTool); }
    std::uint32_t NewestKind() const { return m_image.m_UndoList.front()->nKind; }

    CPaintImage m_image;
    bool m_bHasImage = true;
    float m_fZoom = 1;
    CSize m_client{200, 100};
    CPoint m_scroll;
    bool m_bCapture = false;
    int m_nCursor = 0;
    int m_nOutlineStopped = 0;
    int m_nOpacity = 100;
    int m_nMoveMode = 0;
    ToolOverlay m_overlay;
};

/// Keeps what the program says.
class CSayingSink : public CMessageSink {
public:
    CSayingSink() { SetMessageSink(this); }
    ~CSayingSink() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        m_aMessages.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string& strText) override { m_aStatus.push_back(strText); }
    std::vector<std::string> m_aMessages, m_aStatus;
};

/// All that a step back must restore.
struct PictureState {
    std::vector<std::uint8_t> pixels, floatPixels, mask, floatMask;
    CRect rcFloat;
    bool operator==(const PictureState&) const = default;
};

inline std::vector<std::uint8_t> BytesOfBitmap(const LBitmapBase& bitmap)
{
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        bytes.insert(bytes.end(), bitmap.Row(y), bitmap.Row(y) + bitmap.GetRowBytes());
    return bytes;
}

inline PictureState StateOf(const CPaintImage& image)
{
    PictureState state{BytesOfBitmap(image.m_Bitmap), BytesOfBitmap(image.m_FloatBitmap), {}, {}, {}};
    state.mask.assign(image.m_pMask.get(), image.m_pMask.get() + static_cast<std::size_t>(image.m_nWidth) * image.m_nHeight);
    if (image.m_pFloatMask)
        state.floatMask.assign(image.m_pFloatMask.get(), image.m_pFloatMask.get() + static_cast<std::size_t>(image.m_FloatBitmap.GetWidth()) * image.m_FloatBitmap.GetHeight());
    state.rcFloat = {image.m_nFloatX, image.m_nFloatY, image.m_nFloatX + image.m_nFloatW, image.m_nFloatY + image.m_nFloatH};
    return state;
}

} // namespace kestrune::test

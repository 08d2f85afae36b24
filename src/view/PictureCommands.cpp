#include "view/PictureCommands.h"

#include "acquire/gui/Clipboard.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "doc/gui/CanvasSizeDialog.h"
#include "doc/gui/IndexColorDialog.h"
#include "doc/gui/ResizeDialog.h"
#include "resources/PaletteColors.h"
#include "tools/PictureActs.h"
#include "ui/WaitCursor.h"
#include "view/PaintView.h"

namespace kestrune {

namespace {

/// A command's work on the picture of the view, which has one.
using Act = void (*)(CPaintView& view, CPaintImage& image);

void OnResize(CPaintView& view, CPaintImage& image)
{
    CResizeDialog dialog({{image.m_nWidth, image.m_nHeight}, image.m_nBitsPerPixel, image.m_Bitmap.GetXResolution(),
                          image.m_Bitmap.GetYResolution()}, view.window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    const CWaitCursor wait;
    ResizePicture(image, dialog.PictureSize().cx, dialog.PictureSize().cy, dialog.Method());
}

void OnCanvasSize(CPaintView& view, CPaintImage& image)
{
    CCanvasSizeDialog dialog(image.m_Bitmap, image.m_nBitsPerPixel, BackgroundInUse(), view.window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    const CWaitCursor wait;
    ResizeCanvas(image, dialog.PictureSize().cx, dialog.PictureSize().cy, dialog.Anchor());
}

template <PictureTurn turn>
void OnTurn(CPaintView&, CPaintImage& image)
{
    const CWaitCursor wait;
    TurnPicture(image, turn);
}

template <PictureTurn turn>
void OnTurnSelection(CPaintView&, CPaintImage& image)
{
    if (!TurnSelection(image, turn))
        SayMessage(IDS_NOTHING_SELECTED);
}

void OnClear(CPaintView&, CPaintImage& image)
{
    const CWaitCursor wait;
    ClearPicture(image);
}

/// Converts, and shows mode, depth and palette anew wherever they stand.
void Convert(CPaintView& view, CPaintImage& image, int nColorMode, std::uint32_t dwFlags = 0)
{
    const CWaitCursor wait;
    ChangeColorMode(image, nColorMode, dwFlags);
    UpdateAllViews(view.GetDocument(), HINT_NONE);
}

template <int nColorMode>
void OnPlainMode(CPaintView& view, CPaintImage& image)
{
    Convert(view, image, nColorMode);
}

void OnGrayMode(CPaintView& view, CPaintImage& image)
{
    if (Messages().Message(std::string(StringText(IDS_ASK_GRAYSCALE)), MessageButtons::OkCancel, MessageAnswer::Ok) == MessageAnswer::Ok)
        Convert(view, image, MODE_GRAY);
}

template <int nColorMode>
void OnIndexMode(CPaintView& view, CPaintImage& image)
{
    CIndexColorDialog dialog(image.m_Bitmap, nColorMode == MODE_16COLORS ? 4 : 8, view.window());
    if (dialog.DoModal() == QDialog::Accepted)
        Convert(view, image, nColorMode, dialog.Flags());
}

void OnCopy(CPaintView&, CPaintImage& image)
{
    const CWaitCursor wait;
    PutOnClipboard(CopiedPixels(image));
}

void OnCut(CPaintView&, CPaintImage& image)
{
    const CWaitCursor wait;
    if (PutOnClipboard(CopiedPixels(image))) // what stands nowhere else is not erased
        ClearPicture(image);
}

void OnPasteHere(CPaintView&, CPaintImage& image)
{
    const CWaitCursor wait;
    std::optional<ClipboardPicture> picture = TakeFromClipboard();
    if (!picture) {
        Messages().StatusText(std::string(StringText(IDS_PASTE_UNREADABLE)));
        return;
    }
    picture->bitmap.ColorRes(24, CRF_TRUECOLOR);
    PasteAsFloat(image, picture->bitmap);
}

struct PictureCommand {
    int nId;
    Act act;
    int nColorMode = -1;            ///< checked while the picture has that mode
    bool (*isPossible)() = nullptr; ///< besides a picture
};
constexpr PictureCommand c_aCommands[] = {
    {30006, OnTurn<PictureTurn::Left>},
    {30007, OnTurn<PictureTurn::Right>},
    {30008, OnTurn<PictureTurn::Half>},
    {30009, OnTurnSelection<PictureTurn::Mirror>},
    {30010, OnTurnSelection<PictureTurn::Flip>},
    {30012, OnResize},
    {30013, OnCanvasSize},
    {30084, OnPasteHere, -1, ClipboardHasPicture},
    {30090, OnClear},
    {30109, OnTurn<PictureTurn::Mirror>},
    {30110, OnTurn<PictureTurn::Flip>},
    {30144, OnPlainMode<MODE_BITMAP>, MODE_BITMAP},
    {30145, OnIndexMode<MODE_16COLORS>, MODE_16COLORS},
    {30146, OnIndexMode<MODE_256COLORS>, MODE_256COLORS},
    {30147, OnGrayMode, MODE_GRAY},
    {30148, OnPlainMode<MODE_RGB>, MODE_RGB},
    {57634, OnCopy},
    {57635, OnCut},
};

} // namespace

void RegisterPictureCommands(CPaintView& view)
{
    for (const PictureCommand& command : c_aCommands)
        view.OnCommandId(
            command.nId,
            [&view, &command] {
                if (CPaintImage* pImage = view.GetImage())
                    command.act(view, *pImage);
            },
            [&view, &command](CommandState& state) {
                const CPaintImage* pImage = view.GetImage();
                state.bEnabled = pImage && (!command.isPossible || command.isPossible());
                state.bChecked = pImage && pImage->m_nColorMode == command.nColorMode;
            });
}

} // namespace kestrune

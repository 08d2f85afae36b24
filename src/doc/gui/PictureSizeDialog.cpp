#include "doc/gui/PictureSizeDialog.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nSideLimit = 5000; ///< refused from here on

int SideOf(CSize size, int iSide)
{
    return iSide == 0 ? size.cx : size.cy;
}

} // namespace

CPictureSizeDialog::CPictureSizeDialog(CSize size, int nBitsPerPixel, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_sizeOld(size)
    , m_size(size)
    , m_nBitsPerPixel(nBitsPerPixel)
{
}

CPictureSizeDialog::~CPictureSizeDialog()
{
    CNumEdit::StopTelling(*this);
}

void CPictureSizeDialog::AddSizeRows(CDialogRows& rows, int nWidthTip, int nHeightTip)
{
    for (const Side side : {SIDE_WIDTH, SIDE_HEIGHT}) {
        auto* pBox = m_aBoxes[side] = new CNumEdit;
        // Arrows and wheel stop below the limit without a message. A picture that is larger already keeps its size.
        pBox->SetRange(1, static_cast<float>(std::max(c_nSideLimit - 1, SideOf(m_sizeOld, side))));
        pBox->SetValue(static_cast<float>(SideOf(m_size, side)));
        connect(pBox, &QLineEdit::textEdited, this, [this, side] { OnEdited(side); });
        connect(pBox, &CNumEdit::ValueEdited, this, [this, side] { OnEdited(side); });
        connect(pBox, &QLineEdit::editingFinished, this, [this, side] { OnEdited(side); }); // a sum has been worked out
        rows.AddNumber(TextOf(side == SIDE_WIDTH ? IDS_NEW_WIDTH : IDS_NEW_HEIGHT), pBox, TextOf(side == SIDE_WIDTH ? nWidthTip : nHeightTip),
                       TextOf(IDS_SIZE_PIXELS));
        RegisterKey(side == SIDE_WIDTH ? QStringLiteral("Width") : QStringLiteral("Height"), pBox);
    }
}

void CPictureSizeDialog::StartWithWidth()
{
    m_aBoxes[SIDE_WIDTH]->selectAll();
    m_aBoxes[SIDE_WIDTH]->setFocus();
}

void CPictureSizeDialog::AddMemory(CDialogRows& rows)
{
    m_pMemory = rows.AddFigure(TextOf(IDS_SIZE_MEMORY));
    m_pMemory->setText(MemoryText(m_size));
}

CSize CPictureSizeDialog::SizeAfter(Side side, int nValue) const
{
    return side == SIDE_WIDTH ? CSize{nValue, m_size.cy} : CSize{m_size.cx, nValue};
}

void CPictureSizeDialog::SizeChanged()
{
    if (m_pMemory)
        m_pMemory->setText(MemoryText(m_size));
}

void CPictureSizeDialog::ShowSize(CSize size)
{
    m_size = size;
    for (const Side side : {SIDE_WIDTH, SIDE_HEIGHT})
        m_aBoxes[side]->SetValue(static_cast<float>(SideOf(m_size, side)));
    SizeChanged();
}

void CPictureSizeDialog::OnEdited(Side side)
{
    const int nCode = m_aBoxes[side]->Verify();
    const double fValue = static_cast<double>(m_aBoxes[side]->GetValue());
    if ((nCode != NUM_OK && nCode != NUM_OUT_OF_RANGE) || fValue < 1)
        return; // a number under way; OK says what is wrong with it
    const int nValue = static_cast<int>(std::lround(std::min(fValue, 1e6)));
    if (nValue != SideOf(m_size, side) && TrySize(SizeAfter(side, nValue), side))
        SideTyped(side);
}

bool CPictureSizeDialog::TrySize(CSize size, Side side)
{
    const CSize before = m_size;
    const bool aTooLarge[2] = {size.cx >= c_nSideLimit && size.cx != before.cx, size.cy >= c_nSideLimit && size.cy != before.cy};
    const Side other = side == SIDE_WIDTH ? SIDE_HEIGHT : SIDE_WIDTH;
    if (aTooLarge[side] || aTooLarge[other]) {
        m_bRefused = true;
        ShowSize(before); // first: the message takes the keyboard from the box, which is checked again then
        const Side sideTold = aTooLarge[side] ? side : other; // the one that follows may be the one that grows too large
        SayMessage(sideTold == SIDE_WIDTH ? IDS_WIDTH_TOO_LARGE : IDS_HEIGHT_TOO_LARGE);
        return false;
    }
    m_size = size;
    // The box that is being typed into keeps its text and its cursor.
    for (const Side s : {SIDE_WIDTH, SIDE_HEIGHT})
        if (std::lround(m_aBoxes[s]->GetValue()) != SideOf(size, s))
            m_aBoxes[s]->SetValue(static_cast<float>(SideOf(size, s)));
    SizeChanged();
    return true;
}

QString CPictureSizeDialog::MemoryText(CSize size) const
{
    const auto Kilobytes = [this](CSize s) {
        const std::int64_t nPixels = std::int64_t{s.cx} * s.cy;
        // Pictures of more than 8 bits take three bytes a pixel, whatever their file held.
        return QLocale(QLocale::Korean).toString(static_cast<qlonglong>((m_nBitsPerPixel > 8 ? nPixels * 3 : nPixels * m_nBitsPerPixel / 8) / 1024));
    };
    return size == m_sizeOld ? TextOf(IDS_SIZE_MEMORY_VALUE).arg(Kilobytes(size))
                             : TextOf(IDS_SIZE_MEMORY_CHANGED).arg(Kilobytes(size), Kilobytes(m_sizeOld));
}

std::optional<QString> CPictureSizeDialog::SetKey(const QString& strKey, const QString& strValue)
{
    m_bRefused = false;
    const std::optional<QString> error = CPaintDialog::SetKey(strKey, strValue);
    if (!error && m_bRefused)
        return QStringLiteral("the picture's side may not be %1").arg(strValue);
    return error;
}

} // namespace kestrune

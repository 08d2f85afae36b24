#include "resources/gui/BrushOptionsDialog.h"

#include "base/StringTable.h"
#include "resources/gui/BrushPicture.h"
#include "ui/DialogRows.h"
#include "ui/PopupSlider.h"

#include <QLabel>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nPreview = 70;
constexpr int c_nRebuildDelay = 150; // so that a slider on the move does not rebuild the mask at every step
constexpr int c_nSliderWidth = 180;
constexpr int c_nRadiusSteps = 10; // slider positions a pixel

struct SliderRow {
    const char* pszKey;
    int nLabelId;
    int nTipId;
    int nMin;
    int nMax;
    int nStart;
    const char* pszUnit;
};

constexpr SliderRow c_aRows[] = {
    {"Radius", IDS_BRUSH_RADIUS, IDS_BRUSH_RADIUS_TIP, 0, 1000, 0, "px"},
    {"Hardness", IDS_BRUSH_HARDNESS, IDS_BRUSH_HARDNESS_TIP, 0, 100, 20, ""},
    {"Angle", IDS_BRUSH_ANGLE, IDS_BRUSH_ANGLE_TIP, 0, 180, 0, "°"},
    {"Roundness", IDS_BRUSH_ROUNDNESS, IDS_BRUSH_ROUNDNESS_TIP, 1, 20, 1, ""},
};

} // namespace

CDlgBrushOptions::CDlgBrushOptions(QWidget* pParent)
    : CPaintDialog(pParent)
    , m_pPreview(new QLabel(this))
{
    setWindowTitle(TextOf(IDS_BRUSH_OPTIONS_TITLE));
    m_pPreview->setFrameStyle(QFrame::Box | QFrame::Plain);
    m_pPreview->setFixedSize(c_nPreview + 2 * m_pPreview->frameWidth(), c_nPreview + 2 * m_pPreview->frameWidth());
    m_pPreview->setAccessibleName(TextOf(IDS_BRUSH_PREVIEW));
    Body()->addWidget(m_pPreview, 0, Qt::AlignTop);

    auto* pRows = new CDialogRows;
    for (int i = 0; i < SLIDERS; i++) {
        const SliderRow& row = c_aRows[i];
        const auto slider = static_cast<Slider>(i);
        auto* pSlider = m_aSliders[static_cast<std::size_t>(i)] = new CPopupSlider(this);
        pSlider->SetRange(row.nMin, row.nMax);
        pSlider->SetPos(row.nStart);
        pSlider->SetDefault(row.nStart);
        pSlider->setMinimumWidth(c_nSliderWidth);
        auto* pAfter = new QWidget(this);
        auto* pLayout = new QHBoxLayout(pAfter);
        pLayout->setContentsMargins(0, 0, 0, 0);
        pLayout->setSpacing(0);
        auto* pValue = m_aValues[static_cast<std::size_t>(i)] = new QLabel(pAfter);
        pValue->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        // Numbers end in one line; the percent sign is part of its text and reaches into the column of the units.
        const int nNumber = fontMetrics().horizontalAdvance(QStringLiteral("100.00 ")) + 4, nUnit = fontMetrics().horizontalAdvance(QStringLiteral("px")) + 2;
        pValue->setFixedWidth(i == HARDNESS ? nNumber + nUnit : nNumber);
        pLayout->addWidget(pValue);
        if (i == HARDNESS) {
            pValue->setIndent(std::max(0, nUnit - fontMetrics().horizontalAdvance(u'%')));
        } else {
            auto* pUnit = new QLabel(QString::fromUtf8(row.pszUnit), pAfter);
            pUnit->setFixedWidth(nUnit);
            pLayout->addWidget(pUnit);
        }
        pRows->AddRow(TextOf(row.nLabelId), pSlider, TextOf(row.nTipId), pAfter);
        connect(pSlider, &CPopupSlider::Moved, this, [this, slider] {
            ShowValue(slider, true);
            m_timerPreview.start();
        });
    }
    for (int i = 0; i < SLIDERS; i++)
        ShowValue(static_cast<Slider>(i), false);
    Body()->addLayout(pRows, 1);
    m_timerPreview.setSingleShot(true);
    m_timerPreview.setInterval(c_nRebuildDelay);
    connect(&m_timerPreview, &QTimer::timeout, this, &CDlgBrushOptions::ShowPreview);
    ShowPreview();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

BrushShape CDlgBrushOptions::Shape() const
{
    const int nRadius = m_aSliders[RADIUS]->GetPos();
    return {nRadius ? static_cast<double>(nRadius) / c_nRadiusSteps : 0.1, m_aSliders[HARDNESS]->GetPos(),
            m_aSliders[ANGLE]->GetPos(), m_aSliders[ROUNDNESS]->GetPos()};
}

void CDlgBrushOptions::ShowValue(Slider slider, bool bDragging)
{
    QString strText = QString::asprintf("%5d ", m_aSliders[slider]->GetPos());
    if (slider == RADIUS)
        strText = QString::asprintf("%6.2f ", Shape().dRadius);
    else if (slider == HARDNESS)
        strText = QString::asprintf(bDragging ? "%0d %%" : "%5d %%", m_aSliders[slider]->GetPos());
    m_aValues[slider]->setText(strText);
}

void CDlgBrushOptions::ShowPreview()
{
    m_timerPreview.stop();
    const BrushEntry brush = Brush();
    m_pPreview->setPixmap(QPixmap::fromImage(BrushPicture(brush.m_pMask, brush.m_nWidth, brush.m_nHeight, c_nPreview, devicePixelRatioF())));
}

std::optional<QString> CDlgBrushOptions::SetKey(const QString& strKey, const QString& strValue)
{
    for (int i = 0; i < SLIDERS; i++) {
        if (strKey != QLatin1String(c_aRows[i].pszKey))
            continue;
        bool bNumber = false;
        const double dValue = strValue.toDouble(&bNumber) * (i == RADIUS ? c_nRadiusSteps : 1);
        // A slider has whole positions: the nearest one for a radius between two, none for half a degree.
        const double dWhole = std::round(dValue);
        if (!bNumber || !(dWhole >= c_aRows[i].nMin && dWhole <= c_aRows[i].nMax) || (i != RADIUS && dWhole != dValue))
            return QStringLiteral("the control refuses the value \"%1\"").arg(strValue);
        CPopupSlider* pSlider = m_aSliders[static_cast<std::size_t>(i)];
        pSlider->SetPos(static_cast<int>(dWhole));
        Q_EMIT pSlider->Moved(pSlider->GetPos(), SLIDER_TRACK);
        return {};
    }
    return CPaintDialog::SetKey(strKey, strValue);
}

} // namespace kestrune

#include "filters/gui/CurvesDialog.h"

#include "filters/Curves.h"
#include "filters/FilterStrings.h"
#include "filters/PreviewGeometry.h"
#include "filters/gui/CurveGraph.h"
#include "ui/DialogRows.h"

#include <QComboBox>
#include <QLabel>

namespace kestrune {

namespace {

constexpr int c_nChannels = 4;
constexpr int c_nLast = 255;

/// Takes "x:y,x:y,..." apart; nothing when any of it is no such point.
std::optional<QList<QPoint>> ParsePoints(const QString& strText)
{
    QList<QPoint> points;
    for (const QString& strPoint : strText.split(u',')) {
        const QStringList parts = strPoint.split(u':');
        bool bX = false, bY = false;
        const QPoint pt(parts.value(0).toInt(&bX), parts.value(1).toInt(&bY));
        if (parts.size() != 2 || !bX || !bY || !QRect(0, 0, c_nLast + 1, c_nLast + 1).contains(pt))
            return {};
        points.append(pt);
    }
    return points;
}

} // namespace

CCurvesDialog::CCurvesDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent)
    : CFilterDialog(row, image, dialogData, pParent)
    , m_histograms(CountChannels(dialogData.bmpPreview))
    , m_pChannel(new QComboBox)
    , m_pGraph(new CCurveGraph(Curves(), m_histograms))
    , m_pReadout(new QLabel(TextOf(IDS_CURVES_HINT)))
{
    TakeCurvePoints(Curves());
    auto* pRows = new CDialogRows;
    for (int i = 0; i < c_nChannels; i++)
        m_pChannel->addItem(TextOf(IDS_CHANNEL_FIRST + i));
    pRows->AddRow(TextOf(IDS_CHANNEL), m_pChannel, TextOf(IDS_CHANNEL_TIP));
    RegisterKey(QStringLiteral("Channel"), m_pChannel);
    m_pGraph->setAccessibleName(TextOf(IDS_CURVES_GRAPH));
    m_pGraph->setToolTip(TextOf(IDS_CURVES_GRAPH_TIP));
    pRows->addWidget(m_pGraph, pRows->rowCount(), 0, 1, 3, Qt::AlignHCenter);
    pRows->AddWide(m_pReadout);
    connect(m_pChannel, &QComboBox::currentIndexChanged, m_pGraph, &CCurveGraph::ShowChannel);
    connect(m_pGraph, &CCurveGraph::Changed, this, &CCurvesDialog::ValuesChanged);
    connect(m_pGraph, &CCurveGraph::Pointed, this, [this](int nInput, int nOutput) {
        m_pReadout->setText(TextOf(IDS_CURVES_READOUT).arg(nInput).arg(nOutput));
    });
    Build(pRows, CPreviewGeometry::c_nPaneSize);
    AddDefaultsButton([this] {
        for (int i = 0; i < c_nChannels; i++)
            ResetCurve(Curves(), i);
        m_pGraph->ShowChannel(m_pChannel->currentIndex());
    });
    m_pGraph->setFocus();
}

std::optional<QString> CCurvesDialog::SetKey(const QString& strKey, const QString& strValue)
{
    if (strKey != QLatin1String("Points"))
        return CFilterDialog::SetKey(strKey, strValue);
    const std::optional<QList<QPoint>> points = ParsePoints(strValue);
    if (!points)
        return QStringLiteral("\"%1\" are no points x:y,x:y,... of 0 to 255").arg(strValue);
    for (const QPoint& pt : *points)
        m_pGraph->SetPoint(pt.x(), pt.y());
    return {};
}

void CCurvesDialog::accept()
{
    CFilterDialog::accept();
    if (result() == Accepted)
        ProgramCurves() = Curves();
}

} // namespace kestrune

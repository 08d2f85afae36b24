#include "filters/gui/FilterPreview.h"

#include "filters/FilterCommand.h"
#include "filters/FilterStrings.h"
#include "filters/gui/PreviewPane.h"
#include "ui/Dialog.h"
#include "ui/DialogRows.h"

#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include <utility>

namespace kestrune {

CFilterPreview::CFilterPreview(FilterDialogData& dialogData, int nPane, std::function<void(const CRect& rc)> run,
                               QWidget* pParent)
    : QWidget(pParent)
    , m_data(dialogData)
    , m_geometry({dialogData.bmpPreview.GetWidth(), dialogData.bmpPreview.GetHeight()}, nPane)
    , m_run(std::move(run))
    , m_pPane(new CPreviewPane(m_geometry, dialogData.bmpPreview))
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &CFilterPreview::OnTimer);
    BuildControls();
    Zoom(false);

    connect(m_pPane, &CPreviewPane::DragStarted, this, [this] {
        m_timer.stop();
        m_data.bmpPreview.Copy(m_data.bmpClean);
        m_pPane->update();
    });
    connect(m_pPane, &CPreviewPane::DragEnded, this, [this] { StartTimer(c_nViewDelay); });
    connect(m_pPane, &CPreviewPane::ZoomStep, this,
            [this](int nSteps) { Zoom(nSteps > 0 ? m_geometry.ZoomIn() : m_geometry.ZoomOut()); });
}

void CFilterPreview::BuildControls()
{
    const auto button = [](const QString& strText, int nTipId) {
        auto* pButton = new QToolButton;
        pButton->setText(strText);
        pButton->setToolTip(TextOf(nTipId));
        pButton->setAccessibleName(TextOf(nTipId));
        pButton->setAutoRaise(true);
        pButton->setFocusPolicy(Qt::StrongFocus);
        return pButton;
    };
    m_pZoomOut = button(QStringLiteral("-"), IDS_PREVIEW_ZOOM_OUT);
    m_pZoomLabel = button(QString(), IDS_PREVIEW_ZOOM_ACTUAL);
    m_pZoomIn = button(QStringLiteral("+"), IDS_PREVIEW_ZOOM_IN);
    m_pPane->setAccessibleName(TextOf(IDS_PREVIEW_PANE));
    m_pPane->setToolTip(TextOf(IDS_PREVIEW_PANE_TIP));
    connect(m_pZoomOut, &QToolButton::clicked, this, [this] { Zoom(m_geometry.ZoomOut()); });
    connect(m_pZoomLabel, &QToolButton::clicked, this, [this] { Zoom(m_geometry.ZoomActual()); });
    connect(m_pZoomIn, &QToolButton::clicked, this, [this] { Zoom(m_geometry.ZoomIn()); });

    auto* pColumn = new QVBoxLayout(this);
    pColumn->setContentsMargins(0, 0, 0, 0);
    pColumn->setSpacing(c_nRowGap);
    pColumn->addWidget(m_pPane, 0, Qt::AlignHCenter);
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(0);
    pRow->addWidget(m_pZoomOut);
    pRow->addWidget(m_pZoomLabel, 1, Qt::AlignHCenter);
    pRow->addWidget(m_pZoomIn);
    pColumn->addLayout(pRow);
    pColumn->addStretch(1);
}

void CFilterPreview::StartTimer(int nDelay) { m_timer.start(nDelay); }

void CFilterPreview::OnTimer()
{
    m_timer.stop();
    m_run(m_geometry.FilterRect());
    m_pPane->update();
}

void CFilterPreview::Zoom(bool bChanged)
{
    m_pZoomLabel->setText(QStringLiteral("%1%").arg(m_geometry.GetPercent()));
    if (!bChanged)
        return;
    m_pPane->update();
    StartTimer(c_nViewDelay);
}

} // namespace kestrune

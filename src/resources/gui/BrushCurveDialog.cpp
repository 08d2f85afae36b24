#include "resources/gui/BrushCurveDialog.h"

#include "base/StringTable.h"
#include "resources/gui/BrushZoomView.h"
#include "resources/gui/CurveField.h"
#include "ui/DialogRows.h"
#include "ui/Icons.h"

#include <QLabel>
#include <QToolButton>

#include <cmath>

namespace kestrune {

namespace {
constexpr int c_nPreviewDelay = 50;
}

CDlgBrushCurve::CDlgBrushCurve(SoftMask mask, const CResponseCurve& curve, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_pPreview(new CBrushZoomView(std::move(mask), this))
    , m_pField(new CCurveField(curve, this))
    , m_pZoom(new QLabel(this))
{
    setWindowTitle(TextOf(IDS_BRUSH_CURVE_TITLE));
    auto* pColumn = new QVBoxLayout;
    pColumn->setSpacing(c_nRowGap);
    pColumn->addWidget(m_pPreview);
    pColumn->addLayout(BuildZoomRow());
    pColumn->addWidget(m_pField, 0, Qt::AlignHCenter);
    Body()->addLayout(pColumn);

    auto* pReset = new QPushButton(TextOf(IDS_BRUSH_CURVE_RESET), this);
    pReset->setAutoDefault(false);
    pReset->setToolTip(TextOf(IDS_BRUSH_CURVE_RESET_TIP));
    ButtonRow()->addWidget(pReset);
    connect(pReset, &QPushButton::clicked, m_pField, &CCurveField::Reset);
    m_timerPreview.setSingleShot(true);
    m_timerPreview.setInterval(c_nPreviewDelay);
    connect(&m_timerPreview, &QTimer::timeout, this, &CDlgBrushCurve::ShowPreview);
    connect(m_pField, &CCurveField::CurveChanged, &m_timerPreview, qOverload<>(&QTimer::start));
    connect(m_pPreview, &CBrushZoomView::ZoomChanged, this, [this] {
        m_pZoom->setText(QString::asprintf("%u%%", static_cast<unsigned>(std::lround(m_pPreview->Zoom() * 100))));
    });
    ShowPreview();
    Q_EMIT m_pPreview->ZoomChanged();
    m_pField->setFocus();
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

QLayout* CDlgBrushCurve::BuildZoomRow()
{
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(c_nRowGap);
    const auto add = [&](const char* pszIcon, int nTextId, int nSteps) {
        auto* pButton = new QToolButton(this);
        pButton->setIcon(LoadIcon(QString::fromLatin1(pszIcon)));
        pButton->setAutoRaise(true);
        pButton->setFocusPolicy(Qt::TabFocus);
        pButton->setToolTip(TextOf(nTextId));
        pButton->setAccessibleName(TextOf(nTextId));
        connect(pButton, &QToolButton::clicked, m_pPreview, [this, nSteps] { m_pPreview->ZoomBy(nSteps); });
        pRow->addWidget(pButton);
    };
    pRow->addStretch(1);
    add("commands/zoom-out", IDS_BRUSH_ZOOM_OUT, -1);
    m_pZoom->setAlignment(Qt::AlignCenter);
    m_pZoom->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("1000%")) + 4);
    pRow->addWidget(m_pZoom);
    add("commands/zoom-in", IDS_BRUSH_ZOOM_IN, 1);
    pRow->addStretch(1);
    return pRow;
}

const CResponseCurve& CDlgBrushCurve::Curve() const
{
    return m_pField->Curve();
}

void CDlgBrushCurve::ShowPreview()
{
    m_pPreview->SetMap(ResponseMap(Curve().Table()));
}

std::optional<QString> CDlgBrushCurve::SetKey(const QString& strKey, const QString& strValue)
{
    const QString strRefused = QStringLiteral("the control refuses the value \"%1\"").arg(strValue);
    if (strKey == u"Reset") {
        if (strValue != u"1")
            return strRefused;
        m_pField->Reset();
        return {};
    }
    if (strKey != u"Point")
        return CPaintDialog::SetKey(strKey, strValue);
    const QStringList parts = strValue.split(u',');
    int aValue[2] = {};
    for (int i = 0; i < 2; i++) {
        bool bNumber = false;
        aValue[i] = parts.size() == 2 ? parts[i].toInt(&bNumber) : 0;
        if (!bNumber || aValue[i] < 0 || aValue[i] > 255)
            return strRefused;
    }
    m_pField->SetPoint(aValue[0], aValue[1]);
    return {};
}

} // namespace kestrune

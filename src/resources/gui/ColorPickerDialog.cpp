#include "resources/gui/ColorPickerDialog.h"

#include "base/StringTable.h"
#include "resources/gui/PickerCanvas.h"
#include "ui/DialogRows.h"
#include "ui/Icons.h"
#include "ui/NumEdit.h"
#include "ui/PopupSlider.h"

#include <QButtonGroup>
#include <QGuiApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QRadioButton>
#include <QScreen>
#include <QToolButton>

namespace kestrune {

namespace {

struct ComponentRow {
    const char* pszKey;
    int nLabelId;
    int nUnit;
};
constexpr std::array<ComponentRow, PICK_COUNT> c_aComponents = {{
    {"Hue", IDS_PICK_HUE, NUMUNIT_DEGREE},
    {"Saturation", IDS_PICK_SATURATION, NUMUNIT_PERCENT},
    {"Value", IDS_PICK_VALUE, NUMUNIT_PERCENT},
    {"Red", IDS_PICK_RED, NUMUNIT_NONE},
    {"Green", IDS_PICK_GREEN, NUMUNIT_NONE},
    {"Blue", IDS_PICK_BLUE, NUMUNIT_NONE},
}};

QColor ToQColor(COLORREF cr)
{
    return {RedOf(cr), GreenOf(cr), BlueOf(cr)};
}

/// The colour before (below) and now (above).
class CBeforeAfter : public QWidget {
public:
    CBeforeAfter(const CPickerColor& now, COLORREF crBefore, QWidget* pParent)
        : QWidget(pParent)
        , m_now(now)
        , m_crBefore(crBefore)
    {
        setMinimumSize(64, 48);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(0, 0, width(), height() / 2, ToQColor(m_now.GetColor()));
        painter.fillRect(0, height() / 2, width(), height() - height() / 2, ToQColor(m_crBefore));
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(0, 0, width() - 1, height() - 1);
    }

private:
    const CPickerColor& m_now;
    COLORREF m_crBefore;
};

} // namespace

CColorPickerDialog::CColorPickerDialog(COLORREF crOld, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_color(crOld)
    , m_crOld(crOld)
{
    setWindowTitle(TextOf(IDS_PICK_TITLE));
    Body()->addWidget(BuildCanvas(), 0, Qt::AlignTop);
    Body()->addWidget(BuildComponents(), 0, Qt::AlignTop);
    ShowColor(nullptr);
}

std::optional<COLORREF> CColorPickerDialog::Pick(COLORREF crOld, QWidget* pParent)
{
    CColorPickerDialog dialog(crOld, pParent);
    return dialog.DoModal() == Accepted ? std::optional(dialog.GetColor()) : std::nullopt;
}

QWidget* CColorPickerDialog::BuildCanvas()
{
    auto* pPanel = new QWidget(this);
    auto* pLayout = new QHBoxLayout(pPanel);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(c_nRowGap);
    m_pField = new CPickerCanvas(CPickerCanvas::FIELD, pPanel);
    m_pStrip = new CPickerCanvas(CPickerCanvas::STRIP, pPanel);
    m_pField->setAccessibleName(TextOf(IDS_PICK_FIELD));
    m_pStrip->setAccessibleName(TextOf(IDS_PICK_STRIP));
    pLayout->addWidget(m_pField);
    pLayout->addWidget(m_pStrip);
    connect(m_pField, &CPickerCanvas::Moved, this, [this](int nX, int nY) {
        m_color.Set(c_aPickerAxes[m_onStrip].x, nX);
        m_color.Set(c_aPickerAxes[m_onStrip].y, nY);
        ShowColor(nullptr);
    });
    connect(m_pStrip, &CPickerCanvas::Moved, this, [this](int, int nY) { OnEdited(m_onStrip, nY); });
    return pPanel;
}

QWidget* CColorPickerDialog::BuildComponents()
{
    auto* pPanel = new QWidget(this);
    auto* pGrid = new QGridLayout(pPanel);
    pGrid->setContentsMargins(0, 0, 0, 0);
    pGrid->setVerticalSpacing(c_nRowGap);
    pGrid->setHorizontalSpacing(c_nLabelGap);
    m_pViews = new QButtonGroup(this);
    for (int i = 0; i < PICK_COUNT; i++) {
        const auto component = static_cast<PickerComponent>(i);
        auto* pRadio = new QRadioButton(TextOf(c_aComponents[i].nLabelId), pPanel);
        m_pViews->addButton(pRadio, i);
        auto* pSlider = m_aSliders[i] = new CPopupSlider(pPanel);
        auto* pEdit = m_aEdits[i] = new CNumEdit(pPanel);
        pSlider->SetRange(0, c_aPickerMax[i]);
        pSlider->SetDefault(m_color.Get(component));
        pEdit->SetRange(0, static_cast<float>(c_aPickerMax[i]));
        pEdit->SetUnit(c_aComponents[i].nUnit);
        pEdit->setFixedWidth(64);
        pSlider->setMinimumWidth(pSlider->sizeHint().width());
        for (QWidget* pControl : {static_cast<QWidget*>(pSlider), static_cast<QWidget*>(pEdit)})
            pControl->setAccessibleName(PlainLabel(TextOf(c_aComponents[i].nLabelId)));
        pGrid->addWidget(pRadio, i, 0);
        pGrid->addWidget(pSlider, i, 1);
        pGrid->addWidget(pEdit, i, 2);
        RegisterKey(c_aComponents[i].pszKey, pEdit);
        connect(pSlider, &CPopupSlider::Moved, this, [this, component](int nPos, int) { OnEdited(component, nPos); });
        connect(pEdit, &QLineEdit::textChanged, this, [this, component, pEdit] {
            if (!m_bShowing && pEdit->Verify() == NUM_OK)
                OnEdited(component, static_cast<int>(pEdit->GetValue()));
        });
    }
    m_pViews->button(PICK_HUE)->setChecked(true);
    connect(m_pViews, &QButtonGroup::idToggled, this, [this](int nId, bool bOn) {
        if (bOn) {
            m_onStrip = static_cast<PickerComponent>(nId);
            ShowColor(nullptr);
        }
    });

    AddHexRows(*pGrid);
    return pPanel;
}

/// Hexadecimal entry with the pipette behind it, and the colour before and now.
void CColorPickerDialog::AddHexRows(QGridLayout& grid)
{
    auto* pHexLabel = new QLabel(TextOf(IDS_PICK_HEX), this);
    m_pHex = new QLineEdit(this);
    m_pHex->setMaxLength(7);
    m_pHex->setFixedWidth(90);
    m_pHex->setAttribute(Qt::WA_InputMethodEnabled, false);
    pHexLabel->setBuddy(m_pHex);
    RegisterKey("Hex", m_pHex);
    connect(m_pHex, &QLineEdit::textChanged, this, &CColorPickerDialog::OnHexEdited);
    auto* pPipette = new QToolButton(this);
    pPipette->setIcon(LoadIcon("tools/eyedropper"));
    pPipette->setToolTip(TextOf(IDS_PICK_PIPETTE));
    pPipette->setAccessibleName(TextOf(IDS_PICK_PIPETTE));
    connect(pPipette, &QToolButton::clicked, this, &CColorPickerDialog::BeginPipette);
    m_pPatches = new CBeforeAfter(m_color, m_crOld, this);
    m_pPatches->setToolTip(TextOf(IDS_PICK_PATCHES));
    auto* pHexRow = new QHBoxLayout;
    pHexRow->setSpacing(c_nLabelGap);
    pHexRow->addWidget(m_pHex);
    pHexRow->addWidget(pPipette);
    pHexRow->addStretch();
    grid.setRowMinimumHeight(PICK_COUNT, c_nGroupGap - c_nRowGap);
    grid.addWidget(pHexLabel, PICK_COUNT + 1, 0);
    grid.addLayout(pHexRow, PICK_COUNT + 1, 1, 1, 2);
    grid.addWidget(m_pPatches, PICK_COUNT + 2, 1, 1, 2);
}

void CColorPickerDialog::OnEdited(PickerComponent component, int nValue)
{
    m_color.Set(component, nValue);
    ShowColor(sender() == m_aEdits[component] ? m_aEdits[component] : nullptr);
}

void CColorPickerDialog::OnHexEdited(const QString& strText)
{
    COLORREF cr = 0;
    if (m_bShowing || !ParseHexColor(strText.toStdString(), cr))
        return;
    m_color.SetColor(cr);
    ShowColor(m_pHex);
}

void CColorPickerDialog::SetColor(COLORREF cr)
{
    m_color.SetColor(cr);
    ShowColor(nullptr);
}

void CColorPickerDialog::ShowColor(QWidget* pExcept)
{
    m_bShowing = true;
    for (int i = 0; i < PICK_COUNT; i++) {
        const int nValue = m_color.Get(static_cast<PickerComponent>(i));
        m_aSliders[i]->SetPos(nValue);
        if (m_aEdits[i] != pExcept)
            m_aEdits[i]->SetValue(static_cast<float>(nValue));
    }
    if (m_pHex != pExcept)
        m_pHex->setText(QString::fromStdString(FormatHexColor(m_color.GetColor())));
    m_pField->ShowColor(m_onStrip, m_color);
    m_pStrip->ShowColor(m_onStrip, m_color);
    m_pPatches->update();
    m_bShowing = false;
}

// The pipette: the dialog holds the pointer wherever it goes, the colour under it shows at once, a press keeps it.
void CColorPickerDialog::BeginPipette()
{
    m_bPipette = true;
    m_crBeforePipette = m_color.GetColor();
    setMouseTracking(true);
    grabMouse(LoadCursor("eyedropper"));
    grabKeyboard();
}

void CColorPickerDialog::EndPipette(bool bKeep)
{
    m_bPipette = false;
    releaseMouse();
    releaseKeyboard();
    setMouseTracking(false);
    if (!bKeep)
        SetColor(m_crBeforePipette);
}

void CColorPickerDialog::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!m_bPipette)
        return CPaintDialog::mouseMoveEvent(pEvent);
    const QPoint pt = pEvent->globalPosition().toPoint();
    QScreen* pScreen = QGuiApplication::screenAt(pt);
    if (!pScreen)
        return;
    const QPoint at = pt - pScreen->geometry().topLeft();
    const QImage image = pScreen->grabWindow(0, at.x(), at.y(), 1, 1).toImage();
    if (image.isNull())
        return;
    const QColor color = image.pixelColor(0, 0);
    SetColor(Rgb(color.red(), color.green(), color.blue()));
}

void CColorPickerDialog::mousePressEvent(QMouseEvent* pEvent)
{
    if (m_bPipette)
        EndPipette(pEvent->button() == Qt::LeftButton);
    else
        CPaintDialog::mousePressEvent(pEvent);
}

void CColorPickerDialog::keyPressEvent(QKeyEvent* pEvent)
{
    if (m_bPipette)
        EndPipette(pEvent->key() != Qt::Key_Escape);
    else
        CPaintDialog::keyPressEvent(pEvent);
}

} // namespace kestrune

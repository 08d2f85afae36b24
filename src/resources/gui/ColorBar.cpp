#include "resources/gui/ColorBar.h"

#include "resources/PaletteColors.h"
#include "resources/Swatches.h"
#include "resources/gui/ColorPatches.h"
#include "resources/gui/ColorPickerDialog.h"
#include "resources/gui/ColorWnd.h"

#include <QHBoxLayout>

namespace kestrune {

namespace {
constexpr int c_nMargin = 6;
}

CColorBar::CColorBar(std::filesystem::path pathSwatches, QWidget* pParent)
    : QWidget(pParent)
    , m_pathSwatches(std::move(pathSwatches))
    , m_pPatches(new CColorPatches(this))
    , m_pSwatches(new CColorWnd(this))
{
    auto* pLayout = new QHBoxLayout(this);
    pLayout->setContentsMargins(c_nMargin, c_nMargin, 0, c_nMargin);
    pLayout->setSpacing(c_nMargin);
    pLayout->addWidget(m_pPatches, 0, Qt::AlignTop);
    pLayout->addWidget(m_pSwatches, 1);
    m_pSwatches->SetColors(c_aBuiltInSwatches);

    connect(m_pPatches, &CColorPatches::PickRequested, this, &CColorBar::PickColor);
    connect(m_pPatches, &CColorPatches::SwapRequested, this, &CColorBar::Swap);
    connect(m_pPatches, &CColorPatches::DefaultsRequested, this, &CColorBar::Defaults);
    connect(m_pPatches, &CColorPatches::ActiveChanged, this, &CColorBar::ShowColors);
    connect(m_pSwatches, &CColorWnd::ColorChosen, this, &CColorBar::OnSwatchChosen);
    ShowColors();
}

void CColorBar::showEvent(QShowEvent* pEvent)
{
    QWidget::showEvent(pEvent);
    if (m_bLoaded)
        return;
    m_bLoaded = true;
    // After the window stands: a message about a missing file must not come before it.
    QMetaObject::invokeMethod(this, &CColorBar::LoadSwatchFile, Qt::QueuedConnection);
}

void CColorBar::LoadSwatchFile()
{
    SwatchColors colors = m_pSwatches->GetColors();
    LoadSwatches(m_pathSwatches, colors);
    m_pSwatches->SetColors(colors);
}

void CColorBar::ShowColors()
{
    m_pPatches->SetColors(g_crForeground, g_crBackground);
    m_pSwatches->SetCurrentColor(m_pPatches->IsBackgroundActive() ? g_crBackground : g_crForeground);
}

void CColorBar::SetColor(bool bBackground, COLORREF cr)
{
    if (bBackground)
        SetBackground(cr);
    else
        SetForeground(cr);
    OnChanged();
}

void CColorBar::OnSwatchChosen(COLORREF cr)
{
    SetColor(m_pPatches->IsBackgroundActive(), cr);
}

bool CColorBar::PickColor(bool bBackground)
{
    const auto cr = CColorPickerDialog::Pick(bBackground ? g_crBackground : g_crForeground, window());
    if (cr)
        SetColor(bBackground, *cr);
    return cr.has_value();
}

void CColorBar::Swap()
{
    SwapForegroundAndBackground();
    OnChanged();
}

void CColorBar::Defaults()
{
    ResetForegroundAndBackground();
    OnChanged();
}

void CColorBar::OnChanged()
{
    ShowColors();
    Q_EMIT ColorsChanged();
}

} // namespace kestrune

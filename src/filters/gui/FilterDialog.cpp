#include "filters/gui/FilterDialog.h"

#include "filters/FilterStrings.h"
#include "filters/gui/FilterPreview.h"
#include "ui/DialogRows.h"

namespace kestrune {

CFilterDialog::CFilterDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent)
    : CPaintDialog(pParent)
    , m_row(row)
    , m_image(image)
    , m_data(dialogData)
{
    setWindowTitle(QString::fromUtf8(row.strTitle.data(), static_cast<qsizetype>(row.strTitle.size())));
}

void CFilterDialog::Build(QLayout* pControls, int nPane)
{
    m_pPreview
        = new CFilterPreview(m_data, nPane, [this](const CRect& rc) { PreviewFilter(m_row, m_image, m_data, rc); });
    Body()->addWidget(m_pPreview, 0, Qt::AlignTop);
    auto* pColumn = new QVBoxLayout;
    pColumn->setSpacing(c_nGroupGap);
    pColumn->addLayout(pControls);
    pColumn->addStretch(1);
    Body()->addLayout(pColumn, 1);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    m_pPreview->StartTimer(CFilterPreview::c_nParameterDelay); // the values that it opens with make the first preview
}

void CFilterDialog::AddDefaultsButton(std::function<void()> reset)
{
    auto* pButton = new QPushButton(TextOf(IDS_FILTER_DEFAULTS));
    pButton->setAutoDefault(false);
    pButton->setToolTip(TextOf(IDS_FILTER_DEFAULTS_TIP));
    ButtonRow()->addWidget(pButton);
    connect(pButton, &QPushButton::clicked, this, [this, reset = std::move(reset)] {
        reset();
        ValuesChanged();
    });
}

void CFilterDialog::ValuesChanged() { m_pPreview->StartTimer(CFilterPreview::c_nParameterDelay); }

} // namespace kestrune

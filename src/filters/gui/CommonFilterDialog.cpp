#include "base/Color.h"
#include "filters/FilterStrings.h"
#include "filters/PreviewGeometry.h"
#include "filters/gui/FilterDialog.h"
#include "filters/gui/SliderEdit.h"
#include "resources/gui/ColorPickerDialog.h"
#include "ui/DialogRows.h"
#include "ui/NumEdit.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPixmap>

namespace kestrune {

namespace {

QString FromTable(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

const QString c_strColorKey = QStringLiteral("Color");

} // namespace

CCommonFilterDialog::CCommonFilterDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData,
                                         QWidget* pParent)
    : CFilterDialog(row, image, dialogData, pParent)
{
    auto* pGrid = new CDialogRows;
    for (std::size_t i = 0; i < row.params.size(); i++)
        AddParameter(*pGrid, i);
    if (row.dialog == FilterDialogKind::Colourize)
        AddReferenceColor(*pGrid);
    Build(pGrid, CPreviewGeometry::c_nPaneSize);
    if (row.bDefaultsButton)
        AddDefaultsButton([this] {
            for (std::size_t i = 0; i < m_sliders.size(); i++)
                if (m_sliders[i]) {
                    Values().an[i] = Row().params[i].nDefault;
                    m_sliders[i]->SetValue(Values().an[i]);
                }
        });
    if (!m_sliders.empty() && m_sliders.front()) {
        m_sliders.front()->Edit()->setFocus();
        m_sliders.front()->Edit()->selectAll();
    }
}

void CCommonFilterDialog::AddParameter(QGridLayout& grid, std::size_t iParam)
{
    const FilterParam& param = Row().params[iParam];
    int& nValue = Values().an[iParam];
    m_sliders.push_back(nullptr);
    if (param.control == FilterControl::Check) {
        auto* pCheck = new QCheckBox(FromTable(param.strLabel));
        pCheck->setChecked(nValue != 0);
        pCheck->setToolTip(PlainLabel(FromTable(param.strLabel)));
        grid.addWidget(pCheck, grid.rowCount(), 0, 1, 3);
        RegisterKey(FromTable(param.strKey), pCheck);
        connect(pCheck, &QCheckBox::toggled, this, [this, &nValue](bool bOn) {
            nValue = bOn ? 1 : 0;
            ValuesChanged();
        });
        return;
    }
    const SliderRange range{param.nMin, param.nMax, param.nEditMin, param.nEditMax, param.nDecimals, param.nDefault};
    auto* pSlider = m_sliders.back() = new CSliderEdit(range, this);
    pSlider->SetValue(nValue);
    pSlider->AddTo(grid, FromTable(param.strLabel), FromTable(param.strUnit));
    RegisterKey(FromTable(param.strKey), pSlider->Edit());
    connect(pSlider, &CSliderEdit::Changed, this, [this, &nValue](int nNew) {
        nValue = nNew;
        ValuesChanged();
    });
}

void CCommonFilterDialog::AddReferenceColor(QGridLayout& grid)
{
    m_pReference = new QPushButton;
    m_pReference->setAutoDefault(false);
    m_pReference->setToolTip(TextOf(IDS_TINT_COLOR_TIP));
    auto* pLabel = new QLabel(TextOf(IDS_TINT_COLOR));
    pLabel->setBuddy(m_pReference);
    m_pReference->setAccessibleName(PlainLabel(pLabel->text()));
    const int nRow = grid.rowCount();
    grid.addWidget(pLabel, nRow, 0);
    grid.addWidget(m_pReference, nRow, 1, 1, 2);
    connect(m_pReference, &QPushButton::clicked, this, &CCommonFilterDialog::PickReferenceColor);
    ShowReferenceColor();
}

void CCommonFilterDialog::PickReferenceColor()
{
    const std::optional<COLORREF> cr = CColorPickerDialog::Pick(Values().crReference, this);
    if (!cr)
        return;
    Values().crReference = *cr;
    ShowReferenceColor();
    ValuesChanged();
}

void CCommonFilterDialog::ShowReferenceColor()
{
    const COLORREF cr = Values().crReference;
    QPixmap patch(QSize(64, 14) * devicePixelRatioF());
    patch.setDevicePixelRatio(devicePixelRatioF());
    patch.fill(QColor(RedOf(cr), GreenOf(cr), BlueOf(cr)));
    m_pReference->setIconSize({64, 14});
    m_pReference->setIcon(patch);
}

std::optional<QString> CCommonFilterDialog::SetKey(const QString& strKey, const QString& strValue)
{
    if (!m_pReference || strKey != c_strColorKey)
        return CFilterDialog::SetKey(strKey, strValue);
    const QStringList parts = strValue.split(u',');
    int an[3] = {-1, -1, -1};
    for (int i = 0; i < 3 && parts.size() == 3; i++) {
        bool bNumber = false;
        an[i] = parts[i].toInt(&bNumber);
        if (!bNumber)
            an[i] = -1;
    }
    for (const int n : an)
        if (n < 0 || n > 255)
            return QStringLiteral("\"%1\" is no colour R,G,B").arg(strValue);
    Values().crReference = Rgb(an[0], an[1], an[2]);
    ShowReferenceColor();
    ValuesChanged();
    return {};
}

} // namespace kestrune

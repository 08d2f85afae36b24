#include "tools/gui/OptionPage.h"

#include "base/StringTable.h"
#include "paint/BlendMode.h"
#include "resources/PaintSources.h"
#include "resources/gui/TextureBox.h"
#include "ui/Dialog.h"
#include "ui/DialogRows.h"
#include "ui/Icons.h"
#include "ui/NumEdit.h"
#include "ui/Popup.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QRadioButton>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nLabelSpace = 4;
constexpr int c_nControlSpace = 8;
constexpr int c_nIcon = 20;
constexpr int c_nHeight = 24; ///< of the controls, but for a very large font
constexpr int c_nTextFrame = 4;
constexpr int c_nEditFrame = 12;

int HeightFor(const QWidget& widget)
{
    return std::max(c_nHeight, widget.fontMetrics().height() + c_nTextFrame);
}

QString Utf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

const ToolOptionRow& SettingOf(ToolOption option)
{
    return ToolOptionTable()[static_cast<std::size_t>(option)];
}

/// What says the same already is left as it stands: somebody may be typing there.
void ShowNumber(CNumEdit& edit, int nValue)
{
    if (edit.Verify() != NUM_OK || std::lround(edit.GetValue()) != nValue)
        edit.SetValue(static_cast<float>(nValue));
}

int UnitOf(OptionControl kind)
{
    return kind == OptionControl::Percent                                  ? NUMUNIT_PERCENT
        : kind == OptionControl::Pixels || kind == OptionControl::Size ? NUMUNIT_PIXEL
                                                                           : NUMUNIT_NONE;
}

/// By its number where it has one, else by its section and key.
QString NameOf(const OptionControlRow& row)
{
    if (row.nControl)
        return QStringLiteral("Control%1").arg(row.nControl);
    if (row.option == ToolOption::Count)
        return {};
    const ToolOptionRow& setting = SettingOf(row.option);
    return Utf8(setting.strSection) + u'.' + Utf8(setting.strKey);
}

} // namespace

COptionPage::COptionPage(ToolBar bar, const OptionBoxes& boxes, QWidget* pParent)
    : QWidget(pParent)
    , m_boxes(boxes)
    , m_pLayout(new QHBoxLayout(this))
    , m_pIcon(new QLabel(this))
    , m_pTitle(new QLabel(this))
{
    m_pLayout->setContentsMargins(0, 0, 0, 0);
    m_pLayout->setSpacing(c_nControlSpace);
    m_pLayout->addWidget(m_pIcon);
    m_pLayout->addWidget(m_pTitle);
    m_pTitle->setObjectName(QStringLiteral("EffectTitle"));
    m_pIcon->hide();
    m_pTitle->hide();
    for (const OptionControlRow& row : OptionControls(bar))
        Add(row);
    m_pLayout->addStretch(1);
}

void COptionPage::Add(const OptionControlRow& row)
{
    Entry entry{&row, nullptr, nullptr, new QWidget(this)};
    auto* pRow = new QHBoxLayout(entry.pPanel);
    pRow->setContentsMargins(0, 0, 0, 0);
    pRow->setSpacing(0);
    m_pLayout->addWidget(entry.pPanel);
    switch (row.kind) {
    case OptionControl::Percent:
    case OptionControl::Number:
    case OptionControl::Pixels:
    case OptionControl::Size:
        AddLabel(entry);
        AddNumber(entry);
        break;
    case OptionControl::List:
    case OptionControl::Blend:
        AddLabel(entry);
        AddList(entry);
        break;
    case OptionControl::Check:
        AddCheck(entry);
        break;
    case OptionControl::Buttons:
    case OptionControl::Radio:
        AddButtons(entry);
        break;
    case OptionControl::Hint:
        AddLabel(entry);
        entry.pLabel->setEnabled(false); // the quiet ink
        break;
    case OptionControl::Pattern:
    case OptionControl::Texture:
        AddLabel(entry);
        AddPatch(entry);
        break;
    }
    if (entry.pControl) {
        entry.pControl->setObjectName(NameOf(row));
        entry.pControl->setProperty("controlId", row.nControl);
    }
    m_aEntries.push_back(std::move(entry));
    ShowOption(row.option);
    EnableEntries(row.enabledBy);
}

void COptionPage::Put(Entry& entry, QWidget* pWidget)
{
    entry.pPanel->layout()->addWidget(pWidget);
    if (qobject_cast<QLabel*>(pWidget))
        return;
    pWidget->setToolTip(Utf8(entry.pRow->tip));
    pWidget->setAccessibleName(PlainLabel(Utf8(entry.pRow->label)));
    if (entry.pLabel && !entry.pLabel->buddy())
        entry.pLabel->setBuddy(pWidget);
}

void COptionPage::AddLabel(Entry& entry)
{
    entry.pLabel = new QLabel(Utf8(entry.pRow->label), this);
    entry.pLabel->setContentsMargins(0, 0, c_nLabelSpace, 0);
    Put(entry, entry.pLabel);
}

void COptionPage::AddNumber(Entry& entry)
{
    const ToolOptionRow& setting = SettingOf(entry.pRow->option);
    CNumEdit* pEdit = MakeEdit(UnitOf(entry.pRow->kind), setting.nMin, setting.nMax, setting.nDefault);
    const ToolOption option = entry.pRow->option;
    connect(pEdit, &CNumEdit::ValueEdited, this, [option](float f) { SetToolOption(option, static_cast<int>(std::lround(f))); });
    entry.pControl = pEdit;
    PutEdit(entry, pEdit);
}

CNumEdit* COptionPage::MakeEdit(int nUnit, int nMin, int nMax, int nDefault)
{
    auto* pEdit = new CNumEdit(this);
    pEdit->SetUnit(nUnit);
    pEdit->SetRange(static_cast<float>(nMin), static_cast<float>(nMax));
    pEdit->SetDefault(static_cast<float>(nDefault));
    pEdit->setFixedHeight(HeightFor(*pEdit));
    const QString strWidest = QString::fromStdString(FormatNumber(static_cast<float>(nMax), 0, nUnit));
    const QFontMetrics metrics = pEdit->fontMetrics();
    pEdit->setFixedWidth(std::max(metrics.horizontalAdvance(strWidest), 4 * metrics.horizontalAdvance(u'0')) + c_nEditFrame);
    pEdit->installEventFilter(this);
    connect(pEdit, &QLineEdit::returnPressed, this, [this, pEdit] {
        Settle(*pEdit);
        Q_EMIT Done();
    });
    return pEdit;
}

void COptionPage::PutEdit(Entry& entry, CNumEdit* pEdit)
{
    Put(entry, pEdit);
    if (entry.pRow->kind != OptionControl::Size) {
        auto* pArrow = new CPopupArrow(pEdit, this);
        pArrow->setFixedHeight(HeightFor(*pEdit));
        entry.pPanel->layout()->addWidget(pArrow);
    }
}

void COptionPage::AddPatch(Entry& entry)
{
    const bool bPattern = entry.pRow->kind == OptionControl::Pattern;
    CTextureBox* pBox = bPattern ? m_boxes.pPattern : m_boxes.pTexture;
    auto* pPatch = new CTexturePatch(*pBox, this);
    pPatch->setObjectName(bPattern ? QStringLiteral("Pattern") : QStringLiteral("Texture"));
    Put(entry, pPatch);
    if (!bPattern)
        return;
    m_pPatternPercent = MakeEdit(NUMUNIT_PERCENT, 0, 100, 100);
    m_pPatternPercent->setObjectName(QStringLiteral("PatternPercent"));
    PutEdit(entry, m_pPatternPercent);
    m_pPatternPercent->setToolTip(TextOf(IDS_PATTERN_PERCENT_TIP));
    connect(m_pPatternPercent, &CNumEdit::ValueEdited, pBox, [pBox](float f) { pBox->SetPercent(static_cast<int>(std::lround(f))); });
    connect(pBox, &CTextureBox::Changed, this, &COptionPage::ShowPatternPercent);
    ShowPatternPercent();
}

void COptionPage::ShowPatternPercent()
{
    ShowNumber(*m_pPatternPercent, g_paintPattern.nPercent);
}

/// A number beyond the range becomes its end, and what is no number gives way to the setting.
void COptionPage::Settle(CNumEdit& edit)
{
    Q_EMIT edit.editingFinished(); // works out a sum
    const int nCode = edit.Verify();
    if (nCode == NUM_OK)
        return;
    if (nCode == NUM_OUT_OF_RANGE) {
        edit.SetValue(std::clamp(edit.GetValue(), edit.GetMin(), edit.GetMax()));
        Q_EMIT edit.ValueEdited(edit.GetValue());
        return;
    }
    edit.clear(); // no number at all: the setting is shown again
    if (&edit == m_pPatternPercent)
        ShowPatternPercent();
    for (const Entry& entry : m_aEntries)
        if (entry.pControl == &edit)
            ShowOption(entry.pRow->option);
}

void COptionPage::AddList(Entry& entry)
{
    auto* pCombo = new QComboBox(this);
    if (entry.pRow->kind == OptionControl::Blend)
        for (const std::string_view name : c_aBlendNames)
            pCombo->addItem(Utf8(name));
    for (const OptionItem& item : entry.pRow->items)
        pCombo->addItem(Utf8(item.text));
    pCombo->setMaxVisibleItems(BLEND_COUNT);
    pCombo->setFixedHeight(HeightFor(*pCombo));
    pCombo->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard with the picture
    pCombo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    const ToolOption option = entry.pRow->option;
    connect(pCombo, &QComboBox::activated, this, [this, option](int nIndex) {
        SetToolOption(option, SettingOf(option).nMin + nIndex);
        Q_EMIT Done();
    });
    entry.pControl = pCombo;
    Put(entry, pCombo);
}

void COptionPage::AddCheck(Entry& entry)
{
    auto* pCheck = new QCheckBox(Utf8(entry.pRow->label), this);
    pCheck->setFocusPolicy(Qt::TabFocus);
    const ToolOption option = entry.pRow->option;
    connect(pCheck, &QCheckBox::clicked, this, [option](bool bChecked) { SetToolOption(option, bChecked); });
    entry.pControl = pCheck;
    Put(entry, pCheck);
}

void COptionPage::AddButtons(Entry& entry)
{
    const ToolOption option = entry.pRow->option;
    auto* pGroup = new QButtonGroup(this);
    int nId = SettingOf(option).nMin;
    for (const OptionItem& item : entry.pRow->items) {
        QAbstractButton* pButton = nullptr;
        if (entry.pRow->kind == OptionControl::Radio) {
            if (!pGroup->buttons().isEmpty())
                static_cast<QHBoxLayout*>(entry.pPanel->layout())->addSpacing(c_nControlSpace);
            pButton = new QRadioButton(Utf8(item.text), this);
        } else {
            auto* pTool = new QToolButton(this);
            pTool->setAutoRaise(true);
            pTool->setIcon(LoadIcon(Utf8(item.icon)));
            pTool->setIconSize({16, 16});
            pTool->setFixedSize(c_nHeight, c_nHeight);
            pButton = pTool;
        }
        pButton->setCheckable(true);
        pButton->setFocusPolicy(Qt::TabFocus);
        Put(entry, pButton);
        pButton->setAccessibleName(Utf8(item.text));
        if (entry.pRow->tip.empty())
            pButton->setToolTip(Utf8(item.text));
        pGroup->addButton(pButton, nId++);
    }
    connect(pGroup, &QButtonGroup::idClicked, this, [option](int nClicked) { SetToolOption(option, nClicked); });
    entry.pControl = pGroup;
}

QObject* COptionPage::Control(ToolOption option) const
{
    const auto it = std::find_if(m_aEntries.begin(), m_aEntries.end(),
                                 [&](const Entry& entry) { return entry.pControl && entry.pRow->option == option; });
    return it == m_aEntries.end() ? nullptr : it->pControl;
}

void COptionPage::ShowOption(ToolOption option)
{
    QObject* pControl = option == ToolOption::Count ? nullptr : Control(option);
    if (!pControl)
        return;
    const int nValue = GetToolOption(option);
    if (auto* pEdit = qobject_cast<CNumEdit*>(pControl)) {
        ShowNumber(*pEdit, nValue);
    } else if (auto* pCombo = qobject_cast<QComboBox*>(pControl)) {
        pCombo->setCurrentIndex(nValue - SettingOf(option).nMin);
    } else if (auto* pGroup = qobject_cast<QButtonGroup*>(pControl)) {
        pGroup->button(nValue)->setChecked(true);
    } else if (auto* pCheck = qobject_cast<QCheckBox*>(pControl)) {
        pCheck->setChecked(nValue != 0);
        EnableEntries(option);
    }
}

void COptionPage::EnableEntries(ToolOption check)
{
    for (const Entry& entry : m_aEntries)
        if (check != ToolOption::Count && entry.pRow->enabledBy == check)
            entry.pPanel->setEnabled(GetToolOption(check) != 0);
}

bool COptionPage::IsFor(OptionFor tools, const ToolRow& tool, int nCommand)
{
    switch (tools) {
    case OptionFor::Shapes: return tool.nId == TOOL_RECT_SELECT || tool.nId == TOOL_ELLIPSE_SELECT;
    case OptionFor::Outlines: return tool.nId == TOOL_FREE_SELECT || tool.nId == TOOL_POLYGON_SELECT;
    case OptionFor::Wand: return tool.nId == TOOL_MAGIC_WAND;
    case OptionFor::Strength: {
        const EffectRow* pEffect = FindEffectRow(nCommand);
        return pEffect && !pEffect->strLabel.empty();
    }
    case OptionFor::All: break;
    }
    return true;
}

void COptionPage::ShowTool(const ToolRow& tool, int nCommand)
{
    m_nIconCommand = tool.nBarIcon ? nCommand : 0;
    ShowIcon();
    const EffectRow* pEffect = FindEffectRow(nCommand);
    m_pTitle->setVisible(pEffect != nullptr);
    if (pEffect)
        m_pTitle->setText(Utf8(pEffect->strTitle));
    for (const Entry& entry : m_aEntries) {
        const bool bShown = IsFor(entry.pRow->tools, tool, nCommand);
        entry.pPanel->setVisible(bShown);
        if (entry.pRow->tools == OptionFor::Strength && bShown && entry.pLabel)
            entry.pLabel->setText(Utf8(pEffect->strLabel));
    }
}

void COptionPage::ShowIcon()
{
    m_pIcon->setVisible(m_nIconCommand != 0);
    if (m_nIconCommand)
        m_pIcon->setPixmap(LoadIcon(ToolIconName(m_nIconCommand)).pixmap(QSize(c_nIcon, c_nIcon), devicePixelRatioF()));
}

void COptionPage::changeEvent(QEvent* pEvent)
{
    QWidget::changeEvent(pEvent);
    if (pEvent->type() == QEvent::PaletteChange)
        ShowIcon(); // the theme has another ink
}

bool COptionPage::eventFilter(QObject* pObject, QEvent* pEvent)
{
    auto* pEdit = qobject_cast<CNumEdit*>(pObject);
    if (pEdit && pEvent->type() == QEvent::FocusOut && static_cast<QFocusEvent*>(pEvent)->reason() != Qt::PopupFocusReason)
        Settle(*pEdit);
    if (pEdit && pEvent->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(pEvent)->key() == Qt::Key_Escape) {
        Settle(*pEdit);
        Q_EMIT Done();
        return true;
    }
    return QWidget::eventFilter(pObject, pEvent);
}

} // namespace kestrune

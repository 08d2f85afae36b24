#include "resources/gui/BrushBox.h"

#include "base/Messages.h"
#include "base/StringTable.h"
#include "resources/BrushFile.h"
#include "resources/BrushPrepare.h"
#include "resources/gui/BrushButtons.h"
#include "resources/gui/BrushCurveDialog.h"
#include "resources/gui/BrushFileDialog.h"
#include "resources/gui/BrushOptionsDialog.h"
#include "resources/gui/BrushWnd.h"
#include "ui/DialogRows.h"
#include "ui/Icons.h"
#include "ui/NumEdit.h"
#include "ui/Popup.h"

#include <QComboBox>
#include <QFile>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QToolButton>

#include <algorithm>

namespace kestrune {

namespace {

constexpr int c_nMargin = 6;
constexpr int c_nGap = 4;
constexpr int c_nRestartDelay = 150; // a soft edge or a curve on the move does not rebuild the mask at every step
constexpr int c_nFileRowHeight = 18;

} // namespace

CDlgBrushBox::CDlgBrushBox(std::filesystem::path pathInstall, QWidget* pParent)
    : QWidget(pParent)
    , m_pathInstall(std::move(pathInstall))
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(c_nMargin, c_nGap, c_nMargin, c_nGap);
    pLayout->setSpacing(c_nGap);
    pLayout->addWidget(BuildFileRow());
    pLayout->addWidget(m_pDetails = BuildDetails());
    pLayout->addWidget(m_pList = new CBrushWnd(this), 1);
    pLayout->addWidget(BuildButtons());

    m_timerRestart.setSingleShot(true);
    m_timerRestart.setInterval(c_nRestartDelay);
    connect(&m_timerRestart, &QTimer::timeout, this, &CDlgBrushBox::PrepareActive);
    connect(m_pFiles, &QComboBox::activated, this, &CDlgBrushBox::OnFileChosen);
    connect(m_pSoftEdge, &CNumEdit::ValueEdited, this, &CDlgBrushBox::OnSoftEdgeChanged);
    connect(m_pSoftEdge, &QLineEdit::textEdited, this, &CDlgBrushBox::OnSoftEdgeChanged); // also past the box's range
    connect(m_pSoftEdge, &QLineEdit::editingFinished, this, [this] { m_pSoftEdge->SetValue(static_cast<float>(m_nSoftEdge)); });
    connect(m_pSoftEdge, &QLineEdit::returnPressed, this, &CDlgBrushBox::Done);
    connect(m_pStrip, &QAbstractButton::clicked, this, &CDlgBrushBox::EditCurve);
    connect(m_pList, &CCellGrid::CellClicked, this, &CDlgBrushBox::OnBrushClicked);
    connect(m_pList, &CBrushWnd::BrushEdited, this, &CDlgBrushBox::ApplyBrush);
}

CDlgBrushBox::~CDlgBrushBox()
{
    CNumEdit::StopTelling(*this);
}

QSize CDlgBrushBox::sizeHint() const
{
    return {190, 190};
}

QToolButton* CDlgBrushBox::AddButton(QWidget* pRow, const char* pszIcon, int nTextId, void (CDlgBrushBox::*act)())
{
    auto* pButton = new QToolButton(pRow);
    pButton->setIcon(LoadIcon(QString::fromLatin1(pszIcon)));
    pButton->setIconSize({16, 16});
    pButton->setAutoRaise(true);
    pButton->setFocusPolicy(Qt::TabFocus);
    pButton->setToolTip(TextOf(nTextId));
    pButton->setAccessibleName(PlainLabel(TextOf(nTextId)));
    pRow->layout()->addWidget(pButton);
    if (act)
        connect(pButton, &QToolButton::clicked, this, act);
    return pButton;
}

QWidget* CDlgBrushBox::BuildFileRow()
{
    auto* pRow = new QWidget(this);
    auto* pLayout = new QHBoxLayout(pRow);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(c_nGap);
    m_pFiles = new QComboBox(pRow);
    m_pFiles->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_pFiles->setMinimumContentsLength(6);
    m_pFiles->setAccessibleName(TextOf(IDS_BRUSH_FILES));
    m_pFiles->setToolTip(TextOf(IDS_BRUSH_FILES_TIP));
    pLayout->addWidget(m_pFiles, 1);
    m_pListMode = AddButton(pRow, "widgets/menu", IDS_BRUSH_LIST_MODE, &CDlgBrushBox::OnListMode);
    m_pListMode->setCheckable(true);
    m_pListMode->setToolTip(TextOf(IDS_BRUSH_LIST_MODE_TIP));
    return pRow;
}

QWidget* CDlgBrushBox::BuildDetails()
{
    auto* pDetails = new QWidget(this);
    auto* pGrid = new QGridLayout(pDetails);
    pGrid->setContentsMargins(0, 0, 0, 0);
    pGrid->setHorizontalSpacing(c_nLabelGap);
    pGrid->setVerticalSpacing(c_nGap);
    pGrid->setColumnStretch(1, 1);

    m_pPreview = new CBrushPreview(pDetails);
    pGrid->addWidget(m_pPreview, 0, 0, 2, 1, Qt::AlignTop);

    m_pSoftEdgeLabel = new QLabel(TextOf(IDS_BRUSH_SOFT_EDGE), pDetails);
    m_pSoftEdge = new CNumEdit(pDetails);
    m_pSoftEdge->SetUnit(NUMUNIT_PIXEL);
    m_pSoftEdge->SetRange(0, c_nMaxSoftEdge);
    m_pSoftEdge->SetDefault(0);
    m_pSoftEdge->SetValue(0);
    m_pSoftEdge->setAccessibleName(PlainLabel(TextOf(IDS_BRUSH_SOFT_EDGE)));
    m_pSoftEdge->setToolTip(TextOf(IDS_BRUSH_SOFT_EDGE_TIP));
    m_pSoftEdge->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("10 px")) + 12);
    m_pSoftEdgeLabel->setBuddy(m_pSoftEdge);
    m_pSoftEdgeLabel->setToolTip(m_pSoftEdge->toolTip());
    m_pSoftEdgeLabel->installEventFilter(this); // a press on the label drops the slider too
    auto* pEdge = new QHBoxLayout;
    pEdge->setSpacing(0);
    pEdge->addWidget(m_pSoftEdgeLabel);
    pEdge->addSpacing(c_nLabelGap);
    pEdge->addWidget(m_pSoftEdge, 1);
    pEdge->addWidget(new CPopupArrow(m_pSoftEdge, pDetails));
    pGrid->addLayout(pEdge, 0, 1);

    auto* pSpacingRow = new QWidget(pDetails);
    auto* pSpacingLayout = new QHBoxLayout(pSpacingRow);
    pSpacingLayout->setContentsMargins(0, 0, 0, 0);
    pSpacingLayout->setSpacing(c_nGap);
    m_pSpacing = new QLabel(pSpacingRow);
    m_pSpacing->setToolTip(TextOf(IDS_BRUSH_SPACING_TIP));
    pSpacingLayout->addWidget(m_pSpacing, 1);
    m_pUseSpacing = AddButton(pSpacingRow, "widgets/to-bar", IDS_BRUSH_USE_SPACING, nullptr);
    connect(m_pUseSpacing, &QToolButton::clicked, this, [this] {
        if (m_chosen)
            Q_EMIT SpacingRequested(m_chosen->m_nSpacing);
    });
    pGrid->addWidget(pSpacingRow, 1, 1);

    m_pStrip = new CResponseStrip(pDetails);
    pGrid->addWidget(m_pStrip, 2, 0, 1, 2);
    EnableSpacing(false);
    return pDetails;
}

QWidget* CDlgBrushBox::BuildButtons()
{
    auto* pRow = new QWidget(this);
    auto* pLayout = new QHBoxLayout(pRow);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->setSpacing(0);
    pLayout->addStretch(1);
    AddButton(pRow, "widgets/add", IDS_BRUSH_NEW, &CDlgBrushBox::OnNew);
    AddButton(pRow, "widgets/remove", IDS_BRUSH_DELETE, &CDlgBrushBox::OnDelete);
    AddButton(pRow, "commands/open", IDS_BRUSH_OPEN, &CDlgBrushBox::OnOpen);
    AddButton(pRow, "commands/save", IDS_BRUSH_SAVE, &CDlgBrushBox::OnSave);
    return pRow;
}

void CDlgBrushBox::EnsureLoaded()
{
    if (m_bLoaded)
        return;
    m_bLoaded = true; // before the message, which lets events in
    ScanFolder();
}

void CDlgBrushBox::ListFiles()
{
    m_paths = FindBrushFiles(m_pathInstall);
    m_pFiles->clear();
    for (const std::filesystem::path& path : m_paths)
        m_pFiles->addItem(QFile::decodeName(path.filename().c_str()));
    for (int i = 0; i < m_pFiles->count(); i++)
        m_pFiles->setItemData(i, QSize(0, c_nFileRowHeight), Qt::SizeHintRole);
}

void CDlgBrushBox::ShowFile(const std::filesystem::path& path)
{
    const auto it = std::find_if(m_paths.begin(), m_paths.end(), [&](const std::filesystem::path& row) {
        std::error_code error;
        return std::filesystem::equivalent(row, path, error);
    });
    m_pFiles->setPlaceholderText(QFile::decodeName(path.filename().c_str()));
    m_pFiles->setCurrentIndex(it == m_paths.end() ? -1 : static_cast<int>(it - m_paths.begin()));
}

void CDlgBrushBox::ScanFolder()
{
    ListFiles();
    CBrushFileDialog::SetFirstFolder(m_files, m_pathInstall / "Brushes");
    m_bBrushFilesFound = !m_paths.empty();
    if (!m_bBrushFilesFound)
        return SayStop(IDS_NO_BRUSH_FILES);
    m_pFiles->setCurrentIndex(0);
    LoadFile(m_paths.front(), CBrushWnd::c_nFirstSelected);
}

void CDlgBrushBox::LoadFile(const std::filesystem::path& path, int iSelect)
{
    m_pList->SetBrushes(ReadBrushFile(path), iSelect);
    ApplyBrush(m_pList->Selected());
}

void CDlgBrushBox::OnFileChosen()
{
    EnsureLoaded();
    const int iFile = m_pFiles->currentIndex();
    if (iFile >= 0 && iFile < static_cast<int>(m_paths.size()))
        LoadFile(m_paths[static_cast<std::size_t>(iFile)], CBrushWnd::c_nFirstSelected);
}

void CDlgBrushBox::OnNew()
{
    EnsureLoaded();
    CDlgBrushOptions dialog(window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    m_pList->Append(dialog.Brush());
    ApplyBrush(m_pList->Selected());
}

void CDlgBrushBox::OnDelete()
{
    EnsureLoaded();
    m_pList->RemoveSelected(); // the brush that paints stays as it is until another is chosen
}

void CDlgBrushBox::OnOpen()
{
    EnsureLoaded();
    CBrushFileDialog dialog(m_files, CFileDialogFrame::OpenFiles, window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    LoadFile(dialog.BrushFile(), 0);
    ShowFile(dialog.BrushFile());
}

void CDlgBrushBox::OnSave()
{
    EnsureLoaded();
    CBrushFileDialog dialog(m_files, CFileDialogFrame::SaveFile, window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    if (!WriteBrushFile(dialog.BrushFile(), m_pList->Brushes()))
        return Messages().StatusText(std::string(StringText(IDS_BRUSH_SAVE_FAILED)));
    ListFiles(); // the folder may have one more now
    ShowFile(dialog.BrushFile());
}

void CDlgBrushBox::OnListMode()
{
    m_bListMode = !m_bListMode;
    m_pListMode->setChecked(m_bListMode);
    m_pDetails->setVisible(!m_bListMode);
}

void CDlgBrushBox::OnBrushClicked(int iBrush)
{
    if (!m_bListMode) // there a click moves the frame alone
        ApplyBrush(iBrush);
}

bool CDlgBrushBox::ApplyBrush(int iBrush)
{
    EnsureLoaded();
    if (iBrush < 0 || iBrush >= m_pList->Count())
        return false;
    m_pList->Select(iBrush);
    m_chosen = *m_pList->SelectedBrush();
    PrepareActive();
    return true;
}

void CDlgBrushBox::OnSoftEdgeChanged()
{
    const float fValue = m_pSoftEdge->GetValue();
    m_nSoftEdge = fValue < 0 ? 0 : fValue >= c_nMaxSoftEdge ? c_nMaxSoftEdge : static_cast<int>(fValue);
    m_timerRestart.start();
}

void CDlgBrushBox::EditCurve()
{
    EnsureLoaded();
    CDlgBrushCurve dialog(SoftenBrush(m_chosen.value_or(BrushEntry{}), m_nSoftEdge), m_curve, window());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    m_curve = dialog.Curve();
    m_pStrip->SetTable(m_curve.Table());
    m_timerRestart.start();
}

void CDlgBrushBox::SettleBrush()
{
    EnsureLoaded();
    if (m_timerRestart.isActive())
        PrepareActive();
}

void CDlgBrushBox::PrepareActive()
{
    m_timerRestart.stop();
    if (!m_chosen)
        return;
    g_activeBrush = PrepareBrush(*m_chosen, m_nSoftEdge, m_curve.Table());
    m_pPreview->SetBrush(g_activeBrush, m_chosen->m_nWidth);
    m_pSpacing->setText(TextOf(IDS_BRUSH_SPACING).arg(m_chosen->m_nSpacing));
    Q_EMIT BrushChanged();
}

void CDlgBrushBox::EnableSpacing(bool bEnabled)
{
    m_pUseSpacing->setEnabled(bEnabled && m_chosen);
}

bool CDlgBrushBox::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pObject == m_pSoftEdgeLabel && pEvent->type() == QEvent::MouseButtonPress) {
        const auto* pMouse = static_cast<QMouseEvent*>(pEvent);
        if (pMouse->button() == Qt::LeftButton) {
            (new CPopup(m_pSoftEdge, window()))->OpenAt(pMouse->globalPosition().toPoint());
            return true;
        }
    }
    return QWidget::eventFilter(pObject, pEvent);
}

} // namespace kestrune

#include "filters/gui/LevelsDialog.h"

#include "filters/FilterStrings.h"
#include "filters/gui/HistogramView.h"
#include "filters/gui/SliderEdit.h"
#include "ui/DialogRows.h"
#include "ui/MultiSlider.h"
#include "ui/NumEdit.h"
#include "ui/TwoPointSlider.h"

#include <QComboBox>
#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nPane = 180;
constexpr int c_nHistogramHeight = 100;
constexpr int c_nRampHeight = 11;
constexpr int c_nChannels = 4;
constexpr double c_fMinGamma = 0.1, c_fMaxGamma = 10.0;

struct EditRow {
    const char* pszKey;
    double LevelsChannel::*pValue;
    double fMin, fMax, fDefault, fDelta;
    int nTipId;
};
constexpr EditRow c_aEdits[] = {
    {"Black", &LevelsChannel::fBlack, 0, 255, 0, 1, IDS_LEVELS_BLACK_TIP},
    {"Gamma", &LevelsChannel::fGamma, c_fMinGamma, c_fMaxGamma, 1, 0.1, IDS_LEVELS_GAMMA_TIP},
    {"White", &LevelsChannel::fWhite, 0, 255, 255, 1, IDS_LEVELS_WHITE_TIP},
    {"OutBlack", &LevelsChannel::fOutBlack, 0, 255, 0, 1, IDS_LEVELS_OUT_BLACK_TIP},
    {"OutWhite", &LevelsChannel::fOutWhite, 0, 255, 255, 1, IDS_LEVELS_OUT_WHITE_TIP},
};

/// What single precision made of a number with two decimals, as that number.
double Hundredths(float f) { return std::round(static_cast<double>(f) * 100) / 100; }

} // namespace

CLevelsDialog::CLevelsDialog(const FilterRow& row, CPaintImage& image, FilterDialogData& dialogData, QWidget* pParent)
    : CFilterDialog(row, image, dialogData, pParent)
    , m_pChannel(new QComboBox)
    , m_pHistogram(new CHistogramView(c_nHistogramHeight))
    , m_pInput(new CMultiSlider)
    , m_pOutput(new C2PtSlider)
    , m_histograms(CountChannels(dialogData.bmpPreview))
{
    for (int i = 0; i < c_nChannels; i++)
        m_pChannel->addItem(TextOf(IDS_CHANNEL_FIRST + i));
    m_pOutput->SetRange(0, 255);
    BuildEdits();
    RegisterKey(QStringLiteral("Channel"), m_pChannel);
    ConnectControls();
    Build(BuildColumn(), c_nPane);
    ShowChannel();
    m_edits[0]->setFocus();
    m_edits[0]->selectAll();
}

CLevelsDialog::~CLevelsDialog()
{
    CNumEdit::StopTelling(*this);
}

LevelsChannel& CLevelsDialog::Channel()
{
    return std::get<LevelsValues>(Values().extra).channels[static_cast<std::size_t>(m_pChannel->currentIndex())];
}

void CLevelsDialog::BuildEdits()
{
    for (int i = 0; i < EDIT_COUNT; i++) {
        const EditRow& row = c_aEdits[i];
        auto* pEdit = m_edits[i] = new CNumEdit;
        pEdit->SetDecimalPlaces(2);
        pEdit->SetRange(static_cast<float>(row.fMin), static_cast<float>(row.fMax));
        pEdit->SetClamping(true);
        pEdit->SetDelta(static_cast<float>(row.fDelta));
        pEdit->SetDefault(static_cast<float>(row.fDefault));
        pEdit->setToolTip(TextOf(row.nTipId));
        pEdit->setAccessibleName(TextOf(row.nTipId));
        RegisterKey(QString::fromLatin1(row.pszKey), pEdit);
    }
}

QLayout* CLevelsDialog::BuildColumn()
{
    auto* pRows = new CDialogRows;
    pRows->AddRow(TextOf(IDS_CHANNEL), m_pChannel, TextOf(IDS_CHANNEL_TIP));
    pRows->AddGap();
    const auto addEdits = [&](int nLabelId, std::initializer_list<int> edits) {
        auto* pRow = new QHBoxLayout;
        pRow->setSpacing(c_nLabelGap);
        for (const int i : edits) {
            if (i != *edits.begin())
                pRow->addStretch(1);
            pRow->addWidget(WithSpin(m_edits[i]));
        }
        auto* pLabel = new QLabel(TextOf(nLabelId));
        pLabel->setBuddy(m_edits[*edits.begin()]);
        const int nRow = pRows->rowCount();
        pRows->addWidget(pLabel, nRow, 0);
        pRows->addLayout(pRow, nRow, 1, 1, 2);
    };
    const auto addGraph = [&](QWidget* pView, QWidget* pSlider, int nNameId) {
        auto* pColumn = new QVBoxLayout;
        pColumn->setSpacing(0);
        pSlider->setFixedWidth(pView->width());
        pSlider->setAccessibleName(TextOf(nNameId));
        pSlider->setToolTip(TextOf(nNameId));
        pColumn->addWidget(pView);
        pColumn->addWidget(pSlider);
        pRows->addLayout(pColumn, pRows->rowCount(), 0, 1, 3, Qt::AlignHCenter);
    };
    m_pHistogram->setAccessibleName(TextOf(IDS_LEVELS_HISTOGRAM));
    addGraph(m_pHistogram, m_pInput, IDS_LEVELS_INPUT_SLIDER);
    addEdits(IDS_LEVELS_INPUT, {EDIT_BLACK, EDIT_GAMMA, EDIT_WHITE});
    pRows->AddGap();
    addGraph(new CHistogramView(c_nRampHeight), m_pOutput, IDS_LEVELS_OUTPUT_SLIDER);
    addEdits(IDS_LEVELS_OUTPUT, {EDIT_OUT_BLACK, EDIT_OUT_WHITE});
    return pRows;
}

void CLevelsDialog::ConnectControls()
{
    connect(m_pChannel, &QComboBox::currentIndexChanged, this, [this] { ShowChannel(); });
    m_pInput->installEventFilter(this);
    connect(m_pInput, &CHandleSlider::HandleMoved, this, &CLevelsDialog::OnInputMoved);
    connect(m_pOutput, &CHandleSlider::HandleMoved, this, &CLevelsDialog::OnOutputMoved);
    for (int i = 0; i < EDIT_COUNT; i++) {
        connect(m_edits[i], &CNumEdit::ValueEdited, this, [this, i] { OnEdited(i); });
        connect(m_edits[i], &QLineEdit::editingFinished, this,
                [this, i] { // the limited value, once nobody types any more
                    if (m_edits[i]->Verify() == NUM_OK)
                        m_edits[i]->SetValue(static_cast<float>(Channel().*c_aEdits[i].pValue));
                });
    }
}

/// A double click on the input slider sets all three values back, whichever handle it meets.
bool CLevelsDialog::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pObject != m_pInput || pEvent->type() != QEvent::MouseButtonDblClick)
        return CFilterDialog::eventFilter(pObject, pEvent);
    LevelsChannel& channel = Channel();
    for (const int i : {EDIT_BLACK, EDIT_GAMMA, EDIT_WHITE})
        channel.*c_aEdits[i].pValue = c_aEdits[i].fDefault;
    ShowChannel();
    ValuesChanged();
    return true;
}

void CLevelsDialog::OnEdited(int iEdit)
{
    LevelsChannel& channel = Channel();
    double& fValue = channel.*c_aEdits[iEdit].pValue;
    fValue = std::clamp(Hundredths(m_edits[iEdit]->GetValue()), c_aEdits[iEdit].fMin, c_aEdits[iEdit].fMax);
    // Black and white of the input do not pass each other; those of the output may, which turns the picture over.
    if (iEdit == EDIT_BLACK)
        fValue = std::min(fValue, channel.fWhite);
    if (iEdit == EDIT_WHITE)
        fValue = std::max(fValue, channel.fBlack);
    ShowChannel(m_edits[iEdit]);
    ValuesChanged();
}

void CLevelsDialog::OnInputMoved(int iHandle)
{
    LevelsChannel& channel = Channel();
    if (iHandle == CMultiSlider::HANDLE_MIDDLE) {
        const double fHalf = (channel.fWhite - channel.fBlack) / 2;
        if (fHalf <= 0)
            return ShowChannel();
        const double fGamma = std::pow(10.0, -(m_pInput->GetMiddle() - channel.fBlack - fHalf) / fHalf);
        channel.fGamma = std::clamp(std::round(fGamma * 100) / 100, c_fMinGamma, c_fMaxGamma);
        m_edits[EDIT_GAMMA]->SetValue(static_cast<float>(channel.fGamma)); // the handle stays where the hand holds it
    } else {
        channel.fBlack = m_pInput->GetLow();
        channel.fWhite = m_pInput->GetHigh();
        ShowChannel();
    }
    ValuesChanged();
}

void CLevelsDialog::OnOutputMoved(int)
{
    Channel().fOutBlack = m_pOutput->GetLow();
    Channel().fOutWhite = m_pOutput->GetHigh();
    ShowChannel();
    ValuesChanged();
}

void CLevelsDialog::ShowChannel(const CNumEdit* pExcept)
{
    const LevelsChannel& channel = Channel();
    for (int i = 0; i < EDIT_COUNT; i++)
        if (m_edits[i] != pExcept)
            m_edits[i]->SetValue(static_cast<float>(channel.*c_aEdits[i].pValue));
    m_pInput->SetEnds(static_cast<int>(channel.fBlack), static_cast<int>(channel.fWhite));
    m_pInput->SetGamma(channel.fGamma);
    m_pOutput->SetEnds(static_cast<int>(std::min(channel.fOutBlack, channel.fOutWhite)),
                       static_cast<int>(std::max(channel.fOutBlack, channel.fOutWhite)));
    m_pHistogram->SetCounts(m_histograms[static_cast<std::size_t>(m_pChannel->currentIndex())]);
}

} // namespace kestrune

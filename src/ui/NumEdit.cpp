#include "ui/NumEdit.h"

#include "base/Messages.h"
#include "base/StringTable.h"

#include <QKeyEvent>
#include <QTimer>

#include <algorithm>

namespace kestrune {

namespace {

constexpr const char* c_aFormats[] = {"%.0f", "%.1f", "%.2f", "%.3f"};

bool LooksLikeSum(const std::string& strText)
{
    return strText.find_first_of("+-*/(", 1) != std::string::npos;
}

} // namespace

CNumEdit::CNumEdit(QWidget* pParent)
    : QLineEdit(pParent)
{
    setAlignment(Qt::AlignRight);
    setAttribute(Qt::WA_InputMethodEnabled, false); // digits are typed in Hangul mode too
    connect(this, &QLineEdit::textEdited, this, &CNumEdit::OnKeystroke);
    connect(this, &QLineEdit::editingFinished, this, &CNumEdit::Commit);
}

void CNumEdit::SetUnit(int nUnit)
{
    const float fValue = GetValue();
    m_nUnit = nUnit;
    if (!text().isEmpty())
        SetValue(fValue);
}

void CNumEdit::SetDecimalPlaces(int nDecimals)
{
    m_strFormat = c_aFormats[std::clamp(nDecimals, 0, 3)];
    m_nDecimals = std::clamp(nDecimals, 0, 3);
}

void CNumEdit::SetRange(float fMin, float fMax)
{
    m_fMinValue = fMin;
    m_fMaxValue = fMax;
}

int CNumEdit::Check(float& fValue) const
{
    const int nCode = ReadNumber(CutUnit(text().toStdString(), m_nUnit), fValue);
    if (nCode != NUM_OK)
        return nCode;
    fValue = Limited(fValue);
    return fValue > m_fMaxValue || fValue < m_fMinValue ? NUM_OUT_OF_RANGE : NUM_OK;
}

float CNumEdit::Limited(float fValue) const
{
    return m_bClamping ? std::clamp(fValue, m_fMinValue, m_fMaxValue) : fValue;
}

void CNumEdit::StopTelling(QWidget& listener)
{
    for (CNumEdit* pBox : listener.findChildren<CNumEdit*>())
        pBox->disconnect(&listener);
}

float CNumEdit::GetValue() const
{
    float fValue = 0;
    Check(fValue);
    return fValue;
}

void CNumEdit::SetValue(float fValue)
{
    char szNumber[80];
    std::snprintf(szNumber, sizeof szNumber, m_strFormat.c_str(), static_cast<double>(fValue));
    const std::string strNumber = szNumber;
    if (const auto iPoint = strNumber.find('.'); iPoint != std::string::npos)
        m_nDecimals = std::max(m_nDecimals, static_cast<int>(strNumber.size() - iPoint - 1));
    setText(QString::fromStdString(FormatNumber(fValue, m_nDecimals, m_nUnit)));
}

void CNumEdit::Say(int nCode)
{
    if (nCode == NUM_OUT_OF_RANGE)
        SayStop(IDS_NUMBER_OUT_OF_RANGE);
    if (nCode == NUM_NOT_A_NUMBER)
        SayStop(IDS_NUMBER_EXPECTED);
}

int CNumEdit::Verify() const
{
    float fValue = 0;
    const int nCode = Check(fValue);
    if (m_bVerbose)
        Say(nCode);
    return nCode;
}

int CNumEdit::VerifyAloud() const
{
    float fValue = 0;
    const int nCode = Check(fValue);
    Say(nCode == NUM_UNDER_WAY ? NUM_NOT_A_NUMBER : nCode);
    return nCode;
}

void CNumEdit::OnKeystroke()
{
    // A sum that is being typed is not a bad number yet; it is judged when it is finished.
    const std::string strText = CutUnit(text().toStdString(), m_nUnit);
    if (strText.empty() || LooksLikeSum(strText))
        return;
    if (Verify() == NUM_OK)
        Q_EMIT ValueEdited(GetValue());
}

void CNumEdit::Commit()
{
    const std::string strText = CutUnit(text().toStdString(), m_nUnit);
    float fValue = 0;
    if (ReadNumber(strText, fValue) == NUM_OK) {
        SetValue(Limited(fValue));
        return;
    }
    if (const std::optional<float> fSum = EvaluateSum(strText)) {
        SetValue(Limited(*fSum));
        if (Verify() == NUM_OK)
            Q_EMIT ValueEdited(GetValue());
    }
}

void CNumEdit::StepBy(int nSteps)
{
    if (nSteps == 0 || isReadOnly())
        return;
    const float fOld = GetValue();
    SetValue(std::clamp(fOld + static_cast<float>(nSteps) * m_fDelta, m_fMinValue, m_fMaxValue));
    if (GetValue() != fOld)
        Q_EMIT ValueEdited(GetValue());
}

void CNumEdit::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Space:
        return;
    case Qt::Key_Up:
        return StepBy(1);
    case Qt::Key_Down:
        return StepBy(-1);
    case Qt::Key_PageUp:
        return StepBy(10);
    case Qt::Key_PageDown:
        return StepBy(-10);
    default:
        QLineEdit::keyPressEvent(pEvent);
    }
}

void CNumEdit::wheelEvent(QWheelEvent* pEvent)
{
    if (!hasFocus()) { // a wheel that scrolls past must not change numbers
        pEvent->ignore();
        return;
    }
    StepBy(m_wheel.Take(*pEvent));
    pEvent->accept();
}

void CNumEdit::focusInEvent(QFocusEvent* pEvent)
{
    QLineEdit::focusInEvent(pEvent);
    QTimer::singleShot(0, this, &QLineEdit::selectAll); // after the press that gave the focus has placed its cursor
}

} // namespace kestrune

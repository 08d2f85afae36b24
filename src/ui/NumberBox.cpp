#include "ui/NumberBox.h"

#include <QLineEdit>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

/// Reads a sum from left to right: sum = product {+- product}, product = factor {*/ factor}, factor = number | -factor | (sum).
class CSumReader {
public:
    explicit CSumReader(const QString& strText)
        : m_strText(strText)
    {
        m_strText.remove(u' ');
    }

    std::optional<double> Read()
    {
        const double f = Sum(0);
        const bool bWhole = m_nPos == m_strText.size();
        return m_bGood && bWhole && std::isfinite(f) ? std::optional(f) : std::nullopt;
    }

private:
    static constexpr int c_nMaxDepth = 32; ///< of brackets and signs, so that a pasted text cannot exhaust the stack

    bool Take(QChar c)
    {
        if (m_nPos >= m_strText.size() || m_strText[m_nPos] != c)
            return false;
        m_nPos++;
        return true;
    }

    double Sum(int nDepth)
    {
        double f = Product(nDepth);
        for (;;) {
            if (Take(u'+'))
                f += Product(nDepth);
            else if (Take(u'-'))
                f -= Product(nDepth);
            else
                return f;
        }
    }

    double Product(int nDepth)
    {
        double f = Factor(nDepth);
        for (;;) {
            if (Take(u'*'))
                f *= Factor(nDepth);
            else if (Take(u'/'))
                f /= Factor(nDepth); // a division by zero is not finite and so refused at the end
            else
                return f;
        }
    }

    double Factor(int nDepth)
    {
        if (nDepth > c_nMaxDepth) {
            m_bGood = false;
            return 0;
        }
        if (Take(u'-'))
            return -Factor(nDepth + 1);
        if (Take(u'(')) {
            const double f = Sum(nDepth + 1);
            m_bGood = Take(u')') && m_bGood;
            return f;
        }
        qsizetype nEnd = m_nPos;
        while (nEnd < m_strText.size() && (m_strText[nEnd].isDigit() || m_strText[nEnd] == u'.'))
            nEnd++;
        bool bNumber = false;
        const double f = m_strText.mid(m_nPos, nEnd - m_nPos).toDouble(&bNumber);
        m_bGood = m_bGood && bNumber;
        m_nPos = nEnd;
        return f;
    }

    QString m_strText;
    qsizetype m_nPos = 0;
    bool m_bGood = true;
};

} // namespace

std::optional<double> EvaluateSum(const QString& strText)
{
    return CSumReader(strText).Read();
}

CNumberBox::CNumberBox(double fMin, double fMax, int nDecimals, QWidget* pParent)
    : QDoubleSpinBox(pParent)
{
    setDecimals(nDecimals);
    setRange(fMin, fMax);
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFocusPolicy(Qt::StrongFocus);
    setKeyboardTracking(false);
    lineEdit()->setAttribute(Qt::WA_InputMethodEnabled, false);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

QValidator::State CNumberBox::validate(QString& strText, int&) const
{
    const auto isPart = [](QChar c) { return c.isDigit() || QStringView(u"+-*/(). ").contains(c); };
    if (!std::all_of(strText.cbegin(), strText.cend(), isPart))
        return QValidator::Invalid;
    const std::optional<double> value = EvaluateSum(strText);
    return value && *value >= minimum() && *value <= maximum() ? QValidator::Acceptable : QValidator::Intermediate;
}

double CNumberBox::valueFromText(const QString& strText) const
{
    const double fScale = std::pow(10.0, decimals());
    return std::round(EvaluateSum(strText).value_or(value()) * fScale) / fScale;
}

void CNumberBox::wheelEvent(QWheelEvent* pEvent)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(pEvent);
    else
        pEvent->ignore(); // a page that scrolls under the pointer must not change numbers on its way
}

} // namespace kestrune

#include "ui/NumText.h"

#include <cmath>
#include <cstdio>
#include <iterator>

namespace kestrune {

namespace {

// The library's own reading also takes names such as "nan" and hexadecimal digits; nobody types those.
constexpr char c_szNumberCharacters[] = " +-.0123456789eE";
constexpr char c_szSumCharacters[] = " +-*/().0123456789eE";
constexpr const char* c_aUnits[] = {"cm", "mm", "in", "px", "pt", "%", "°"};

/// Recursive descent over the four operations; the sign of a factor is part of it.
class CSumReader {
public:
    explicit CSumReader(const std::string& strText)
        : m_p(strText.c_str())
    {
    }

    std::optional<double> ReadAll()
    {
        const double fValue = Terms();
        SkipBlanks();
        return m_bOk && *m_p == 0 && std::isfinite(fValue) ? std::optional(fValue) : std::nullopt;
    }

private:
    void SkipBlanks()
    {
        while (*m_p == ' ')
            m_p++;
    }
    bool Take(char c)
    {
        SkipBlanks();
        if (*m_p != c)
            return false;
        m_p++;
        return true;
    }
    double Terms()
    {
        double fValue = Factors();
        for (;;) {
            if (Take('+'))
                fValue += Factors();
            else if (Take('-'))
                fValue -= Factors();
            else
                return fValue;
        }
    }
    double Factors()
    {
        double fValue = Factor();
        for (;;) {
            if (Take('*'))
                fValue *= Factor();
            else if (Take('/'))
                fValue /= Factor();
            else
                return fValue;
        }
    }
    double Factor()
    {
        if (++m_nDepth > c_nMaxDepth)
            m_bOk = false;
        double fValue = 0;
        if (!m_bOk)
            return fValue;
        if (Take('-')) {
            fValue = -Factor();
        } else if (Take('(')) {
            fValue = Terms();
            m_bOk = m_bOk && Take(')');
        } else {
            SkipBlanks();
            int nUsed = 0;
            m_bOk = std::sscanf(m_p, "%lf%n", &fValue, &nUsed) == 1;
            m_p += nUsed;
        }
        m_nDepth--;
        return fValue;
    }

    static constexpr int c_nMaxDepth = 32;
    const char* m_p;
    int m_nDepth = 0;
    bool m_bOk = true;
};

} // namespace

const char* UnitText(int nUnit)
{
    return nUnit >= 0 && nUnit < static_cast<int>(std::size(c_aUnits)) ? c_aUnits[nUnit] : "";
}

std::string CutUnit(const std::string& strText, int nUnit)
{
    const std::string strUnit = UnitText(nUnit);
    if (strUnit.empty() || !strText.ends_with(strUnit))
        return strText;
    std::string strNumber = strText.substr(0, strText.size() - strUnit.size());
    if (strNumber.ends_with(' '))
        strNumber.pop_back();
    return strNumber;
}

int ReadNumber(const std::string& strText, float& fValue)
{
    fValue = 0;
    if (strText == "+" || strText == "-")
        return NUM_UNDER_WAY;
    if (strText.find_first_not_of(c_szNumberCharacters) != std::string::npos) {
        std::sscanf(strText.c_str(), "%f", &fValue);
        if (!std::isfinite(fValue))
            fValue = 0;
        return NUM_NOT_A_NUMBER;
    }
    char szRest[2];
    return std::sscanf(strText.c_str(), "%f%1s", &fValue, szRest) == 1 ? NUM_OK : NUM_NOT_A_NUMBER;
}

std::optional<float> EvaluateSum(const std::string& strText)
{
    if (strText.find_first_not_of(c_szSumCharacters) != std::string::npos)
        return std::nullopt;
    const std::optional<double> fValue = CSumReader(strText).ReadAll();
    return fValue ? std::optional(static_cast<float>(*fValue)) : std::nullopt;
}

std::string FormatNumber(float fValue, int nDecimals, int nUnit)
{
    char szNumber[80];
    std::snprintf(szNumber, sizeof szNumber, "%.*f", nDecimals, static_cast<double>(fValue));
    const std::string strUnit = UnitText(nUnit);
    return strUnit.empty() ? szNumber : szNumber + (" " + strUnit);
}

} // namespace kestrune

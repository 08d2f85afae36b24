#include "script/ScriptWords.h"

namespace kestrune {

namespace {

/// Reads `$12` at the position of its `$`; moves to its last character. False for an argument that was not given.
bool TakeArgument(const QString& strLine, qsizetype& i, const QStringList& args, QString& strWord, QString& strError)
{
    qsizetype nEnd = i + 1;
    while (nEnd < strLine.size() && strLine[nEnd] >= u'0' && strLine[nEnd] <= u'9')
        nEnd++;
    if (nEnd == i + 1) { // a dollar sign of the text
        strWord += u'$';
        return true;
    }
    bool bNumber = false;
    const int nArgument = strLine.mid(i + 1, nEnd - i - 1).toInt(&bNumber);
    if (!bNumber || nArgument < 1 || nArgument > args.size()) {
        strError = QStringLiteral("no argument was given for %1").arg(strLine.mid(i, nEnd - i));
        return false;
    }
    strWord += args[nArgument - 1];
    i = nEnd - 1;
    return true;
}

} // namespace

std::optional<QStringList> SplitScriptLine(const QString& strLine, const QStringList& args, QString& strError)
{
    QStringList words;
    QString strWord;
    bool bInWord = false;
    bool bQuoted = false;
    for (qsizetype i = 0; i < strLine.size(); i++) {
        const QChar c = strLine[i];
        if (!bQuoted && c.isSpace()) {
            if (bInWord)
                words << strWord;
            strWord.clear();
            bInWord = false;
            continue;
        }
        if (!bInWord && c == u'#')
            break;
        bInWord = true;
        if (c == u'"')
            bQuoted = !bQuoted;
        else if (c != u'$')
            strWord += c;
        else if (!TakeArgument(strLine, i, args, strWord, strError))
            return std::nullopt;
    }
    if (bQuoted) {
        strError = QStringLiteral("a quotation mark has no end");
        return std::nullopt;
    }
    if (bInWord)
        words << strWord;
    return words;
}

} // namespace kestrune

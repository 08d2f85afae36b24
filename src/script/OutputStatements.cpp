#include "script/ScriptContext.h"

#include "app/CommandTable.h"
#include "base/Files.h"
#include "script/ScriptFrame.h"
#include "tools/ToolRegistry.h"

#include <QBuffer>
#include <QFile>

#include <limits>

namespace kestrune::statements {

namespace {

StatementResult NoDocument()
{
    return QStringLiteral("no document is open");
}

StatementResult WriteOut(const QString& strPath, std::span<const std::uint8_t> bytes)
{
    const std::filesystem::path path(QFile::encodeName(strPath).toStdString());
    const std::optional<std::string> error = WriteFileDurably(path, bytes);
    return error ? QString::fromStdString(*error) : StatementResult{};
}

/// A 24-bit bitmap as a binary PPM.
Bytes EncodePpm(const LBitmapBase& bitmap)
{
    const std::string strHead = "P6\n" + std::to_string(bitmap.GetWidth()) + " " + std::to_string(bitmap.GetHeight()) + "\n255\n";
    Bytes bytes(strHead.size() + bitmap.GetRowBytes() * static_cast<std::size_t>(bitmap.GetHeight()));
    std::uint8_t* pOut = std::copy(strHead.begin(), strHead.end(), bytes.data());
    for (int y = 0; y < bitmap.GetHeight(); y++) {
        const std::uint8_t* pRow = bitmap.Row(y);
        for (int x = 0; x < bitmap.GetWidth(); x++, pRow += 3, pOut += 3) {
            pOut[0] = pRow[2];
            pOut[1] = pRow[1];
            pOut[2] = pRow[0];
        }
    }
    return bytes;
}

/// A mask as a binary PGM; without bytes it is all 0.
Bytes EncodePgm(CSize size, const std::uint8_t* pMask)
{
    const std::string strHead = "P5\n" + std::to_string(size.cx) + " " + std::to_string(size.cy) + "\n255\n";
    const std::size_t nBytes = static_cast<std::size_t>(size.cx) * size.cy;
    Bytes bytes(strHead.size() + nBytes);
    std::uint8_t* pOut = std::copy(strHead.begin(), strHead.end(), bytes.data());
    if (pMask)
        std::copy_n(pMask, nBytes, pOut);
    return bytes;
}

StatementResult PrintSize(CScriptContext& context, const QStringList&)
{
    const CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    context.print(QStringLiteral("%1 %2").arg(pImage->m_nWidth).arg(pImage->m_nHeight));
    return {};
}

StatementResult PrintMode(CScriptContext& context, const QStringList&)
{
    const CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    context.print(QString::number(pImage->m_nColorMode));
    return {};
}

StatementResult PrintDepth(CScriptContext& context, const QStringList&)
{
    const CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    context.print(QString::number(pImage->m_nBitsPerPixel));
    return {};
}

StatementResult PrintColors(CScriptContext& context, const QStringList&)
{
    context.print(QString::number(g_nColors)); // in force also while no document is open
    return {};
}

StatementResult PrintPixel(CScriptContext& context, const QStringList& words)
{
    const CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    CPoint pt;
    if (const StatementResult failure = ReadNumber(words[0], 0, pImage->m_Bitmap.GetWidth() - 1, pt.x))
        return failure;
    if (const StatementResult failure = ReadNumber(words[1], 0, pImage->m_Bitmap.GetHeight() - 1, pt.y))
        return failure;
    const COLORREF cr = pImage->m_Bitmap.GetPixelColor(pt.x, pt.y);
    context.print(QStringLiteral("%1 %2 %3").arg(RedOf(cr)).arg(GreenOf(cr)).arg(BlueOf(cr)));
    return {};
}

StatementResult PrintCommand(CScriptContext& context, const QStringList& words)
{
    int nId = 0;
    if (const StatementResult failure = ReadNumber(words[0], 1, std::numeric_limits<int>::max(), nId))
        return failure;
    const CommandState state = context.app.QueryCommand(nId);
    if (!state.bEnabled && !FindCommand(nId))
        return QStringLiteral("there is no command %1").arg(nId);
    context.print(QLatin1String(state.bEnabled ? "enabled " : "disabled ") + QLatin1String(state.bChecked ? "checked" : "unchecked"));
    return {};
}

StatementResult PrintTool(CScriptContext& context, const QStringList&)
{
    context.print(QStringLiteral("0x%1 %2").arg(g_nCurrentTool, 0, 16).arg(g_nCurrentToolCommand));
    return {};
}

StatementResult PrintSetting(CScriptContext& context, const QStringList& words)
{
    const CProfile& profile = context.app.Profile();
    const std::string strSection = words[0].toStdString();
    const std::string strKey = words[1].toStdString();
    if (const auto text = profile.FindString(strSection, strKey))
        context.print(QString::fromStdString(OneLine(*text)));
    else if (const auto number = profile.FindInt(strSection, strKey))
        context.print(QString::number(*number));
    else if (const auto bytes = profile.FindBinary(strSection, strKey))
        context.print(QString::fromLatin1(
            QByteArray(reinterpret_cast<const char*>(bytes->data()), static_cast<qsizetype>(bytes->size())).toHex()));
    else
        context.print(QStringLiteral("missing"));
    return {};
}

StatementResult PrintTitle(CScriptContext& context, const QStringList&)
{
    if (!context.app.ActiveChild())
        return NoDocument();
    context.print(ActiveTitle(context.app));
    return {};
}

/// What `print` can tell; the words count after its name.
constexpr StatementRow c_aItems[] = {
    {"size", 0, 0, PrintSize},       {"mode", 0, 0, PrintMode},   {"depth", 0, 0, PrintDepth},
    {"colors", 0, 0, PrintColors},   {"pixel", 2, 2, PrintPixel}, {"bounds", 0, 0, PrintBounds},
    {"boundary", 0, 0, PrintBoundary},     {"float", 0, 0, PrintFloat},    {"history", 0, 0, PrintHistory},
    {"command", 1, 1, PrintCommand}, {"tool", 0, 0, PrintTool},   {"setting", 2, 2, PrintSetting},
    {"title", 0, 0, PrintTitle},
};

} // namespace

StatementResult Print(CScriptContext& context, const QStringList& words)
{
    for (const StatementRow& row : c_aItems) {
        if (words[0] != QLatin1String(row.strName))
            continue;
        if (words.size() - 1 != row.nMinWords)
            return QStringLiteral("print %1 needs %2 words after it").arg(words[0]).arg(row.nMinWords);
        if (!row.run)
            return QStringLiteral("not yet available: print %1").arg(words[0]);
        return row.run(context, words.mid(1));
    }
    return QStringLiteral("nothing to print is named \"%1\"").arg(words[0]);
}

StatementResult Dump(CScriptContext& context, const QStringList& words)
{
    const bool bPixels = words[0] == u"image" || words[0] == u"base" || words[0] == u"float";
    if (!bPixels && words[0] != u"mask" && words[0] != u"floatmask")
        return QStringLiteral("nothing to dump is named \"%1\"").arg(words[0]);
    const CPaintImage* pImage = context.Image();
    if (!pImage)
        return NoDocument();
    if (words[0] == u"float" && !pImage->m_FloatBitmap.IsAllocated())
        return QStringLiteral("there is no float");
    if (bPixels)
        return WriteOut(words[1], EncodePpm(words[0] == u"image"  ? pImage->m_Bitmap
                                            : words[0] == u"base" ? pImage->m_BaseBitmap
                                                                  : pImage->m_FloatBitmap));
    if (words[0] == u"floatmask" && pImage->m_pFloatMask)
        return WriteOut(words[1], EncodePgm({pImage->m_FloatBitmap.GetWidth(), pImage->m_FloatBitmap.GetHeight()}, pImage->m_pFloatMask.get()));
    // The memory of a mask that is known to be empty may never have been written.
    const bool bWritten = words[0] == u"mask" && !(pImage->m_bMaskBoundsValid && pImage->m_bMaskEmpty);
    return WriteOut(words[1], EncodePgm({pImage->m_nWidth, pImage->m_nHeight}, bWritten ? pImage->m_pMask.get() : nullptr));
}

StatementResult Screenshot(CScriptContext& context, const QStringList& words)
{
    QImage image;
    if (words.size() == 1) {
        image = GrabFrame(context.app);
    } else {
        int nBarId = 0;
        if (const StatementResult failure = ReadNumber(words[1], 1, std::numeric_limits<int>::max(), nBarId))
            return failure;
        image = GrabBox(context.app, nBarId);
        if (image.isNull())
            return QStringLiteral("there is no box %1").arg(nBarId);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        return QStringLiteral("the window could not be drawn");
    return WriteOut(words[0], {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())});
}

} // namespace kestrune::statements

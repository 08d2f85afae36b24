#include "acquire/gui/Clipboard.h"

#include "acquire/gui/ImageMimeData.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kestrune {

namespace {

/// What the clipboard offers, as its owner told when it was asked last.
struct Offer {
    bool bPicture = false;
    bool bAnything = false;
};
std::optional<Offer> g_offer;

const Offer& PresentOffer()
{
    static QClipboard* s_pWatched = nullptr;
    QClipboard* pClipboard = QGuiApplication::clipboard();
    if (s_pWatched != pClipboard) { // a new application object has a new one
        s_pWatched = pClipboard;
        g_offer.reset();
        QObject::connect(pClipboard, &QClipboard::dataChanged, pClipboard, [] { g_offer.reset(); });
    }
    if (g_offer)
        return *g_offer;
    g_offer.emplace();
    if (const QMimeData* pData = pClipboard->mimeData()) {
        const QStringList formats = pData->formats();
        g_offer->bAnything = !formats.isEmpty();
        for (const QString& strFormat : formats)
            g_offer->bPicture |= FindClipboardFormat(strFormat.toStdString()) != nullptr;
    }
    return *g_offer;
}

} // namespace

bool ClipboardHasPicture()
{
    return PresentOffer().bPicture;
}

bool ClipboardHasContents()
{
    return PresentOffer().bAnything;
}

bool PutOnClipboard(const LBitmapBase& bitmap)
{
    if (!bitmap.IsAllocated() || bitmap.GetBitsPerPixel() != 24)
        return false;
    QClipboard* pClipboard = QGuiApplication::clipboard();
    pClipboard->setMimeData(new CImageMimeData(bitmap));
    g_offer.reset(); // not every system tells a program of its own change at once
    return qobject_cast<const CImageMimeData*>(pClipboard->mimeData()) != nullptr; // not every platform tells who owns it
}

std::optional<ClipboardPicture> TakeFromClipboard()
{
    const QMimeData* pData = QGuiApplication::clipboard()->mimeData();
    if (!pData)
        return std::nullopt;
    if (const auto* pOwn = qobject_cast<const CImageMimeData*>(pData))
        return ClassifyPicture(pOwn->Bitmap());
    for (const ClipboardFormat& row : ClipboardFormats()) {
        const QString strType = QString::fromUtf8(row.mimeType.data(), static_cast<qsizetype>(row.mimeType.size()));
        if (!pData->hasFormat(strType))
            continue;
        const QByteArray bytes = pData->data(strType);
        ClipboardPicture picture;
        if (DecodeClipboard({reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())}, row, picture))
            return picture; // the next coding may be sound where this one was not
    }
    return std::nullopt;
}

void EmptyClipboard()
{
    QGuiApplication::clipboard()->clear();
    g_offer.reset();
}

} // namespace kestrune

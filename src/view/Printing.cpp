#include "view/Printing.h"

#include "acquire/gui/ImageMimeData.h"
#include "base/Messages.h"
#include "base/StringTable.h"
#include "view/PaintView.h"

#include <QImage>
#include <QPageSetupDialog>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>

#include <algorithm>
#include <memory>
#include <utility>

namespace kestrune {

namespace {

constexpr int c_nDefaultDots = 96;

PrintDriver& Driver()
{
    static PrintDriver s_driver;
    return s_driver;
}

QPrinter& Printer()
{
    // Made at the first use: finding the printers takes time that the start should not pay.
    static const std::unique_ptr<QPrinter> s_pPrinter = [] {
        auto pPrinter = std::make_unique<QPrinter>(QPrinter::HighResolution);
        pPrinter->setPageSize(QPageSize(QPageSize::A4));
        return pPrinter;
    }();
    return *s_pPrinter;
}

template <typename Dialog>
bool Ask(QWidget* pParent)
{
    if (Driver())
        return Driver()(Printer());
    Dialog dialog(&Printer(), pParent);
    return dialog.exec() == QDialog::Accepted;
}

QString TitleOf(const CPaintView& view)
{
    return QString::fromStdString(view.GetDocument().GetTitle());
}

} // namespace

QRectF PlaceOnPage(const LBitmapBase& bitmap, const QRectF& rcPage, double fDotsX, double fDotsY)
{
    const bool bKnown = bitmap.GetXResolution() > 0 && bitmap.GetYResolution() > 0;
    const double fWidth = bitmap.GetWidth() * fDotsX / (bKnown ? bitmap.GetXResolution() : c_nDefaultDots);
    const double fHeight = bitmap.GetHeight() * fDotsY / (bKnown ? bitmap.GetYResolution() : c_nDefaultDots);
    const double fFit = std::min({1.0, rcPage.width() / fWidth, rcPage.height() / fHeight});
    QRectF rc(0, 0, fWidth * fFit, fHeight * fFit);
    rc.moveCenter(rcPage.center());
    return rc;
}

bool PrintPicture(const LBitmapBase& bitmap, QPrinter& printer, const QString& strTitle)
{
    printer.setDocName(strTitle);
    QPainter painter;
    if (!bitmap.IsAllocated() || !painter.begin(&printer))
        return false;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setRenderHint(QPainter::LosslessImageRendering); // a PDF keeps the very pixels
    QRectF rcPage = printer.pageLayout().paintRectPixels(printer.resolution());
    rcPage.moveTopLeft({0, 0}); // the painter counts from the margins
    painter.drawImage(PlaceOnPage(bitmap, rcPage, printer.logicalDpiX(), printer.logicalDpiY()), ToQImage(bitmap));
    return painter.end();
}

void RunPrint(CPaintView& view)
{
    if (!Ask<QPrintDialog>(&view))
        return;
    if (!PrintPicture(view.GetImage()->m_Bitmap, Printer(), TitleOf(view)))
        SayMessage(IDS_PRINT_FAILED);
}

void RunPrintPreview(CPaintView& view)
{
    const auto print = [&](QPrinter* pPrinter) { PrintPicture(view.GetImage()->m_Bitmap, *pPrinter, TitleOf(view)); };
    if (Driver()) {
        if (Driver()(Printer()))
            print(&Printer());
        return;
    }
    QPrintPreviewDialog dialog(&Printer(), &view);
    dialog.resize(900, 700);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, print);
    dialog.exec();
}

void RunPageSetup(QWidget* pParent)
{
    Ask<QPageSetupDialog>(pParent);
}

void RunPrinterSetup(QWidget* pParent)
{
    Ask<QPrintDialog>(pParent);
}

void SetPrintDriver(PrintDriver driver)
{
    Driver() = std::move(driver);
}

} // namespace kestrune

#pragma once

#include <functional>

#include <QRectF>

class QPrinter;
class QString;
class QWidget;

namespace kestrune {

class CPaintView;
class LBitmapBase;

/// Where a picture lies on a page, in the page's device pixels: at its own dots per inch (96 where the file does not say), made smaller when it
/// does not fit between the margins, in their middle.
QRectF PlaceOnPage(const LBitmapBase& bitmap, const QRectF& rcPage, double fDotsX, double fDotsY);

/// Prints a 24-bit picture on one page. False when the printer could not be opened.
bool PrintPicture(const LBitmapBase& bitmap, QPrinter& printer, const QString& strTitle);

// The commands. They share one printer for as long as the program runs, so what was set up stays.
void RunPrint(CPaintView& view);         ///< 57607
void RunPrintPreview(CPaintView& view);  ///< 57609
void RunPageSetup(QWidget* pParent);     ///< 57605
void RunPrinterSetup(QWidget* pParent);  ///< 57606

/// Answers the print dialogs in place of a person: may set up the printer, returns false to cancel. Empty: a person does.
using PrintDriver = std::function<bool(QPrinter&)>;
void SetPrintDriver(PrintDriver driver);

} // namespace kestrune

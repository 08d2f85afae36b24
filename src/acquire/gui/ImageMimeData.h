#pragma once

#include "doc/Bitmap.h"

#include <QMimeData>

namespace kestrune {

/// A picture on its way to another program, in every coding of `ClipboardFormats`. It shares the picture's pixels and encodes
/// only what the other side asks for.
class CImageMimeData : public QMimeData {
    Q_OBJECT
public:
    /// `bitmap` has 24 bits.
    explicit CImageMimeData(const LBitmapBase& bitmap);

    /// The picture itself, for a taker within the program.
    const LBitmapBase& Bitmap() const { return m_bitmap; }

    QStringList formats() const override;
    bool hasFormat(const QString& strType) const override;

protected:
    QVariant retrieveData(const QString& strType, QMetaType type) const override;

private:
    LBitmapBase m_bitmap;
};

/// A 24-bit bitmap as the toolkit's image of the same bytes (blue, green, red), with its resolution.
QImage ToQImage(const LBitmapBase& bitmap);

} // namespace kestrune

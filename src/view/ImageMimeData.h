#pragma once

#include "doc/Bitmap.h"

#include <QMimeData>

namespace kestrune {

/// A picture on its way to another program, as a device-independent bitmap and as PNG. It shares the picture's pixels and
/// encodes only what the other side asks for.
class CImageMimeData : public QMimeData {
    Q_OBJECT
public:
    explicit CImageMimeData(const LBitmapBase& bitmap);

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

#pragma once

#include "doc/gui/ImagePreview.h"
#include "ui/Dialog.h"

namespace kestrune {

/// What is known of a picture file: path, bits, width, height and the two resolutions.
class CFileInfoDialog : public CPaintDialog {
    Q_OBJECT
public:
    explicit CFileInfoDialog(const PreviewResult& result, QWidget* pParent = nullptr);
};

} // namespace kestrune

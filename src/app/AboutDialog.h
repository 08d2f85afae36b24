#pragma once

#include "ui/Dialog.h"

namespace kestrune {

/// The about box: name, version, and credits that scroll by.
class CAboutDialog : public CPaintDialog {
    Q_OBJECT
public:
    explicit CAboutDialog(QWidget* pParent);
};

} // namespace kestrune

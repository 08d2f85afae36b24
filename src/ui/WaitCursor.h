#pragma once

#include <QGuiApplication>

namespace kestrune {

/// The wait cursor for as long as this lives, also when what runs throws.
class CWaitCursor {
public:
    CWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};

} // namespace kestrune

#pragma once

#include "filters/PreviewGeometry.h"

#include <QTimer>
#include <QWidget>

#include <functional>

class QToolButton;

namespace kestrune {

class CPreviewPane;
struct FilterDialogData;

/// The preview of a filter dialog: the pane, the buttons "-" and "+" with the zoom between them, and the timer that is
/// the one way to a filter run.
///
/// The dialog's bitmaps share their rows with the picture; a run writes the pane's rows alone, so what a preview costs
/// follows the pane and not the picture.
class CFilterPreview : public QWidget {
    Q_OBJECT
public:
    /// Delays before a run, in milliseconds: after a change of what is seen, and after a change of a parameter (long
    /// enough that a burst of changes costs one run).
    static constexpr int c_nViewDelay = 50;
    static constexpr int c_nParameterDelay = 150;

    /// The bitmaps of `dialogData` are prepared and outlive the preview. `run` filters a rectangle of the picture into
    /// its preview bitmap.
    CFilterPreview(FilterDialogData& dialogData, int nPane, std::function<void(const CRect& rc)> run,
                   QWidget* pParent = nullptr);

    /// Starts the timer, or starts it anew.
    void StartTimer(int nDelay);
    /// What the tick does: stops the timer, filters the pane's rectangle, paints the pane.
    void OnTimer();
    bool IsWaiting() const { return m_timer.isActive(); }
    const CPreviewGeometry& Geometry() const { return m_geometry; }

private:
    void BuildControls();
    void Zoom(bool bChanged);

    FilterDialogData& m_data;
    CPreviewGeometry m_geometry;
    std::function<void(const CRect&)> m_run;
    QTimer m_timer;
    CPreviewPane* m_pPane;
    QToolButton* m_pZoomOut;
    QToolButton* m_pZoomLabel;
    QToolButton* m_pZoomIn;
};

} // namespace kestrune

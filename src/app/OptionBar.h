#pragma once

#include <QToolBar>

class QCheckBox;
class QComboBox;
class QLabel;
class QStackedWidget;

namespace kestrune {

/// The text of a zoom factor in the zoom box and the zoom pane: "%5.f" of its percent, and a percent sign.
QString ZoomText(float fZoom);
/// The factor of a typed percentage ("150", "150 %"); 0 when it is none.
float ParseZoomText(const QString& strText);

/// The bar below the main toolbar: the options of the current tool in one row, and the zoom panel at its right end.
/// Its height is that of the zoom panel's row for every tool.
class COptionBar : public QToolBar {
    Q_OBJECT
public:
    explicit COptionBar(QWidget* pParent);

    /// Shows a tool's page, which the bar takes over at the first call; null shows none.
    void ShowPage(QWidget* pPage);

    /// The zoom panel follows the active view; disabled without one.
    void ShowZoom(float fZoom);
    void EnableZoom(bool bEnabled);
    /// What typing a percentage and pressing Enter does.
    void TypeZoom(float fZoom);

    bool FrameFollowsZoom() const;
    void SetFrameFollowsZoom(bool bFollows);

Q_SIGNALS:
    void ZoomChosen(float fZoom);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    void OnZoomEntered();
    void FitLabel();
    void OrderTabs();

    QStackedWidget* m_pPages;
    QLabel* m_pZoomLabel;
    QComboBox* m_pZoom;
    QCheckBox* m_pFollow;
};

} // namespace kestrune

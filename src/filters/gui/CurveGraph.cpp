#include "filters/gui/CurveGraph.h"

#include "filters/Curves.h"
#include "filters/gui/HistogramView.h"
#include "ui/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace kestrune {

namespace {

constexpr int c_nMargin = 8; ///< room for half a point
constexpr int c_nLast = 255;
constexpr double c_fCatch = 9; ///< how near a press has to be to take a point
constexpr int c_nPullOut = 24; ///< how far outside the graph a point is let go
constexpr double c_fPointRadius = 4;
constexpr int c_nFewestPoints = 2;
constexpr int c_nSlotWidth = 16;
constexpr int c_nLeap = 10; ///< of an arrow key with Shift

QColor ChannelColor(int nChannel, const QPalette& palette)
{
    static constexpr QRgb c_aInks[] = {0, 0xffd04030, 0xff309040, 0xff4070d8};
    return nChannel == 0 ? palette.color(QPalette::Text) : QColor(c_aInks[nChannel]);
}

bool IsUsed(const CurvePoint& point) { return point.x != -1; }

} // namespace

CCurveGraph::CCurveGraph(CurvesValues& values, const ChannelHistograms& histograms, QWidget* pParent)
    : QWidget(pParent)
    , m_values(values)
    , m_histograms(histograms)
{
    setFixedSize(sizeHint());
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
}

QSize CCurveGraph::sizeHint() const
{
    constexpr int nSide = c_nLast + 1 + 2 * c_nMargin;
    return {nSide, nSide};
}

QPointF CCurveGraph::ToWidget(int x, int y) const { return {c_nMargin + x + 0.5, c_nMargin + c_nLast - y + 0.5}; }

QPoint CCurveGraph::FromWidget(QPointF pt) const
{
    return {static_cast<int>(std::floor(pt.x())) - c_nMargin,
            c_nLast + c_nMargin - static_cast<int>(std::floor(pt.y()))};
}

void CCurveGraph::ShowChannel(int nChannel)
{
    m_nChannel = nChannel;
    m_iPoint = -1;
    m_bDragging = false;
    m_pulledOut.reset();
    update();
}

void CCurveGraph::SetPoint(int x, int y)
{
    m_iPoint = CurveSlot(x);
    Points()[static_cast<std::size_t>(m_iPoint)] = {x, y};
    RebuildCurve(m_values, m_nChannel);
    update();
    Q_EMIT Changed();
}

int CCurveGraph::PointAt(QPointF pt) const
{
    const CurvesValues::Points& points = m_values.points[static_cast<std::size_t>(m_nChannel)];
    int iBest = -1;
    double fBest = c_fCatch;
    for (std::size_t i = 0; i < points.size(); i++) {
        if (!IsUsed(points[i]))
            continue;
        const QPointF d = ToWidget(points[i].x, points[i].y) - pt;
        if (std::hypot(d.x(), d.y()) < fBest) {
            fBest = std::hypot(d.x(), d.y());
            iBest = static_cast<int>(i);
        }
    }
    return iBest;
}

int CCurveGraph::CountPoints() const
{
    const CurvesValues::Points& points = m_values.points[static_cast<std::size_t>(m_nChannel)];
    return static_cast<int>(std::count_if(points.begin(), points.end(), IsUsed));
}

/// Moves the chosen point; it stops before the slots of its neighbours, so that the points stay in order and none
/// swallows another.
void CCurveGraph::MovePoint(int x, int y)
{
    if (m_iPoint < 0)
        return;
    const auto used
        = [this](int i) { return i >= 0 && i < c_nCurvePoints && IsUsed(Points()[static_cast<std::size_t>(i)]); };
    int iFirst = m_iPoint, iLast = m_iPoint;
    while (iFirst > 0 && !used(iFirst - 1))
        iFirst--;
    while (iLast < c_nCurvePoints - 1 && !used(iLast + 1))
        iLast++;
    x = std::clamp(x, std::max(0, iFirst * c_nSlotWidth - c_nSlotWidth / 2),
                   std::min(c_nLast, iLast * c_nSlotWidth + c_nSlotWidth / 2 - 1));
    y = std::clamp(y, 0, c_nLast);
    Points()[static_cast<std::size_t>(m_iPoint)] = {};
    SetPoint(x, y);
}

void CCurveGraph::RemovePoint(int iSlot)
{
    if (iSlot < 0 || CountPoints() <= c_nFewestPoints)
        return;
    Points()[static_cast<std::size_t>(iSlot)] = {};
    m_iPoint = -1;
    RebuildCurve(m_values, m_nChannel);
    update();
    Q_EMIT Changed();
}

void CCurveGraph::Tell()
{
    if (m_iPoint >= 0 && IsUsed(Points()[static_cast<std::size_t>(m_iPoint)]))
        Q_EMIT Pointed(Points()[static_cast<std::size_t>(m_iPoint)].x, Points()[static_cast<std::size_t>(m_iPoint)].y);
}

void CCurveGraph::mousePressEvent(QMouseEvent* pEvent)
{
    const int iPoint = PointAt(pEvent->position());
    if (pEvent->button() == Qt::RightButton)
        return RemovePoint(iPoint);
    if (pEvent->button() != Qt::LeftButton)
        return;
    m_bDragging = true;
    m_iPoint = iPoint;
    if (iPoint < 0) {
        const QPoint pt = FromWidget(pEvent->position());
        SetPoint(std::clamp(pt.x(), 0, c_nLast), std::clamp(pt.y(), 0, c_nLast));
    }
    update();
    Tell();
}

void CCurveGraph::mouseMoveEvent(QMouseEvent* pEvent)
{
    const QPoint pt = FromWidget(pEvent->position());
    if (!m_bDragging) {
        const int iPoint = PointAt(pEvent->position());
        if (iPoint != m_iPoint && !hasFocus()) {
            m_iPoint = iPoint;
            update();
        }
        const int x = std::clamp(pt.x(), 0, c_nLast);
        Q_EMIT Pointed(x, m_values.curve[static_cast<std::size_t>(m_nChannel)][static_cast<std::size_t>(x)]);
        return;
    }
    const QRect rcKeep(-c_nPullOut, -c_nPullOut, c_nLast + 1 + 2 * c_nPullOut, c_nLast + 1 + 2 * c_nPullOut);
    if (!rcKeep.contains(pt)) {
        if (!m_pulledOut && m_iPoint >= 0 && CountPoints() > c_nFewestPoints) {
            m_pulledOut = Points()[static_cast<std::size_t>(m_iPoint)];
            RemovePoint(m_iPoint);
            setCursor(Qt::ForbiddenCursor);
        }
        return;
    }
    if (m_pulledOut) { // back again before the button went up
        SetPoint(m_pulledOut->x, m_pulledOut->y);
        m_pulledOut.reset();
        setCursor(Qt::CrossCursor);
    }
    MovePoint(pt.x(), pt.y());
    Tell();
}

void CCurveGraph::mouseReleaseEvent(QMouseEvent*)
{
    m_bDragging = false;
    m_pulledOut.reset();
    setCursor(Qt::CrossCursor);
}

void CCurveGraph::leaveEvent(QEvent*)
{
    if (m_bDragging || hasFocus())
        return;
    m_iPoint = -1;
    update();
}

/// The next used point to the right (or to the left), round at the ends.
void CCurveGraph::ChoosePoint(int nStep)
{
    int i = m_iPoint >= 0 ? m_iPoint : nStep > 0 ? -1 : 0;
    for (int n = 0; n < c_nCurvePoints; n++) {
        i = (i + nStep + c_nCurvePoints) % c_nCurvePoints;
        if (IsUsed(Points()[static_cast<std::size_t>(i)]))
            break;
    }
    m_iPoint = i;
    update();
    Tell();
}

void CCurveGraph::keyPressEvent(QKeyEvent* pEvent)
{
    const int nBy = pEvent->modifiers() & Qt::ShiftModifier ? c_nLeap : 1;
    const auto move = [&](int dx, int dy) {
        if (m_iPoint < 0)
            ChoosePoint(1);
        const CurvePoint point = Points()[static_cast<std::size_t>(m_iPoint)];
        MovePoint(point.x + dx, point.y + dy);
        Tell();
    };
    switch (pEvent->key()) {
    case Qt::Key_PageUp:
        return ChoosePoint(-1);
    case Qt::Key_PageDown:
        return ChoosePoint(1);
    case Qt::Key_Left:
        return move(-nBy, 0);
    case Qt::Key_Right:
        return move(nBy, 0);
    case Qt::Key_Up:
        return move(0, nBy);
    case Qt::Key_Down:
        return move(0, -nBy);
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        return RemovePoint(m_iPoint);
    case Qt::Key_Insert: {
        const int iFree = std::clamp(m_iPoint + 1, 0, c_nCurvePoints - 1);
        const int x = std::min(iFree * c_nSlotWidth, c_nLast);
        SetPoint(x, m_values.curve[static_cast<std::size_t>(m_nChannel)][static_cast<std::size_t>(x)]);
        return Tell();
    }
    default:
        QWidget::keyPressEvent(pEvent);
    }
}

void CCurveGraph::DrawGrid(QPainter& painter, const QRectF& rc) const
{
    painter.fillRect(rc, palette().color(QPalette::Base));
    QColor bars = palette().color(QPalette::Text);
    bars.setAlphaF(0.15f);
    DrawHistogram(painter, rc, m_histograms[static_cast<std::size_t>(m_nChannel)], bars);
    painter.setPen(ThemeLine());
    for (int i = 1; i < 4; i++) {
        const double f = i * rc.width() / 4;
        painter.drawLine(QPointF(rc.left() + f, rc.top()), QPointF(rc.left() + f, rc.bottom()));
        painter.drawLine(QPointF(rc.left(), rc.top() + f), QPointF(rc.right(), rc.top() + f));
    }
    painter.drawRect(rc);
    painter.setPen(QPen(ThemeLine(), 1, Qt::DashLine));
    painter.drawLine(rc.bottomLeft(), rc.topRight());
}

void CCurveGraph::DrawCurve(QPainter& painter) const
{
    const auto& curve = m_values.curve[static_cast<std::size_t>(m_nChannel)];
    QPainterPath path(ToWidget(0, curve[0]));
    for (int x = 1; x <= c_nLast; x++)
        path.lineTo(ToWidget(x, curve[static_cast<std::size_t>(x)]));
    const QColor ink = ChannelColor(m_nChannel, palette());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.6));
    painter.drawPath(path);
    const CurvesValues::Points& points = m_values.points[static_cast<std::size_t>(m_nChannel)];
    for (std::size_t i = 0; i < points.size(); i++) {
        if (!IsUsed(points[i]))
            continue;
        const bool bChosen = static_cast<int>(i) == m_iPoint;
        painter.setPen(QPen(bChosen ? ThemeAccent() : ink, 1.6));
        painter.setBrush(bChosen ? ThemeAccent() : palette().color(QPalette::Base));
        painter.drawEllipse(ToWidget(points[i].x, points[i].y), c_fPointRadius, c_fPointRadius);
    }
}

void CCurveGraph::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRectF rc(c_nMargin, c_nMargin, c_nLast + 1, c_nLast + 1);
    DrawGrid(painter, rc);
    if (hasFocus()) {
        painter.setPen(ThemeAccent());
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(rc.adjusted(-1, -1, 0, 0));
    }
    painter.setRenderHint(QPainter::Antialiasing);
    DrawCurve(painter);
}

} // namespace kestrune

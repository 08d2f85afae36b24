// The graph of Curves under the mouse and the keys, and the handles of Levels.

#include "FilterTestKit.h"

#include "filters/Curves.h"
#include "filters/gui/CurveGraph.h"
#include "filters/gui/LevelsDialog.h"
#include "ui/MultiSlider.h"
#include "ui/TwoPointSlider.h"

#include <QSignalSpy>
#include <QTest>

using namespace kestrune;

namespace {

class CurveGraph : public testing::Test {
protected:
    CurveGraph()
    {
        for (int c = 0; c < 4; c++)
            ResetCurve(m_values, c);
        m_pGraph = std::make_unique<CCurveGraph>(m_values, m_histograms);
        m_pGraph->show();
    }
    void Mouse(QEvent::Type type, int x, int y, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPointF pt = m_pGraph->ToWidget(x, y);
        QMouseEvent event(type, pt, m_pGraph->mapToGlobal(pt), type == QEvent::MouseMove ? Qt::NoButton : button,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : button, {});
        QApplication::sendEvent(m_pGraph.get(), &event);
    }
    void Drag(QPoint from, std::initializer_list<QPoint> path)
    {
        Mouse(QEvent::MouseButtonPress, from.x(), from.y());
        for (const QPoint& pt : path)
            Mouse(QEvent::MouseMove, pt.x(), pt.y());
        Mouse(QEvent::MouseButtonRelease, path.end()[-1].x(), path.end()[-1].y());
    }
    /// The used points of a channel as "x:y x:y".
    std::string Points(int nChannel = 0) const
    {
        std::string strPoints;
        for (const CurvePoint& p : m_values.points[nChannel])
            if (p.x != -1)
                strPoints += (strPoints.empty() ? "" : " ") + std::to_string(p.x) + ":" + std::to_string(p.y);
        return strPoints;
    }

    CurvesValues m_values;
    ChannelHistograms m_histograms{};
    std::unique_ptr<CCurveGraph> m_pGraph;
};

} // namespace

TEST_F(CurveGraph, APressAddsAPointAndDraggingMovesIt)
{
    QSignalSpy changed(m_pGraph.get(), &CCurveGraph::Changed);
    Drag({100, 180}, {{110, 190}, {120, 200}});
    EXPECT_EQ(Points(), "0:0 120:200 255:255");
    EXPECT_EQ(changed.count(), 3);
    EXPECT_NEAR(m_values.curve[0][120], 200, 2);
    Drag({123, 197}, {{123, 150}}); // near enough to take the same point
    EXPECT_EQ(Points(), "0:0 123:150 255:255");
    Drag({255, 255}, {{255, 64}});
    EXPECT_EQ(m_values.curve[0][255], 64) << "the end of the curve follows its point";
    EXPECT_EQ(m_values.curve[1][255], 255);
}

TEST_F(CurveGraph, APointStopsBeforeItsNeighbours)
{
    Drag({64, 64}, {{64, 90}});
    Drag({160, 160}, {{20, 260}});
    EXPECT_EQ(Points(), "0:0 64:90 72:255 255:255");
    Drag({72, 255}, {{250, -5}});
    EXPECT_EQ(Points(), "0:0 64:90 247:0 255:255");
}

TEST_F(CurveGraph, APointThatIsPulledOutIsGoneAndComesBackBeforeTheRelease)
{
    Drag({128, 40}, {{128, -60}, {128, 300}});
    EXPECT_EQ(Points(), "0:0 255:255");
    EXPECT_NEAR(m_values.curve[0][128], 128, 1) << "the line stands again";
    Drag({128, 40}, {{128, -60}, {130, 50}});
    EXPECT_EQ(Points(), "0:0 130:50 255:255");
    Mouse(QEvent::MouseButtonPress, 130, 50, Qt::RightButton);
    EXPECT_EQ(Points(), "0:0 255:255");
    Mouse(QEvent::MouseButtonPress, 255, 255, Qt::RightButton);
    Drag({0, 0}, {{-90, -90}});
    EXPECT_EQ(Points(), "0:0 255:255") << "two points always remain";
}

TEST_F(CurveGraph, KeysChooseMoveAddAndRemovePoints)
{
    m_pGraph->ShowChannel(3);
    QTest::keyClick(m_pGraph.get(), Qt::Key_PageDown);
    QTest::keyClick(m_pGraph.get(), Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(m_pGraph.get(), Qt::Key_Right);
    EXPECT_EQ(Points(3), "1:10 255:255");
    QTest::keyClick(m_pGraph.get(), Qt::Key_Insert);
    EXPECT_EQ(Points(3).find("1:10 16:"), 0u) << Points(3);
    QTest::keyClick(m_pGraph.get(), Qt::Key_Delete);
    EXPECT_EQ(Points(3), "1:10 255:255");
    QTest::keyClick(m_pGraph.get(), Qt::Key_PageUp);
    QTest::keyClick(m_pGraph.get(), Qt::Key_Down);
    EXPECT_EQ(Points(3), "1:10 255:254");
    EXPECT_EQ(Points(0), "0:0 255:255");
}

TEST(LevelsDialog, HandlesAndEditsStayInStep)
{
    const auto pImage = MakePicture(64, 64);
    FilterDialogData data;
    PrepareFilterDialog(*pImage, data);
    CMemoryProfile profile;
    const FilterRow& row = *FindFilter(30025);
    data.values = LoadFilterValues(row, profile);
    CLevelsDialog dialog(row, *pImage, data, nullptr);
    dialog.show();
    CMultiSlider* pInput = nullptr;
    C2PtSlider* pOutput = nullptr;
    for (CHandleSlider* pSlider : dialog.findChildren<CHandleSlider*>()) {
        pInput = dynamic_cast<CMultiSlider*>(pSlider) ? dynamic_cast<CMultiSlider*>(pSlider) : pInput;
        pOutput = dynamic_cast<C2PtSlider*>(pSlider) ? dynamic_cast<C2PtSlider*>(pSlider) : pOutput;
    }
    ASSERT_TRUE(pInput && pOutput);
    const LevelsChannel& channel = std::get<LevelsValues>(data.values.extra).channels[0];
    const auto drag = [](CHandleSlider* pSlider, int nFrom, int nTo) {
        QTest::mousePress(pSlider, Qt::LeftButton, {}, {pSlider->ValueToX(nFrom), 12});
        const QPoint to(pSlider->ValueToX(nTo), 12);
        QMouseEvent move(QEvent::MouseMove, to, pSlider->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(pSlider, &move);
        QTest::mouseRelease(pSlider, Qt::LeftButton, {}, to);
    };
    drag(pInput, 0, 40);
    drag(pInput, 255, 200);
    EXPECT_EQ(channel.fBlack, 40);
    EXPECT_EQ(channel.fWhite, 200);
    drag(pInput, 120, 160); // half of the half: 10 to the power of -0.5
    EXPECT_NEAR(channel.fGamma, 0.32, 0.001);
    EXPECT_EQ(dialog.SetKey("Gamma", "1"), std::nullopt);
    EXPECT_EQ(pInput->GetMiddle(), 120);
    EXPECT_EQ(dialog.SetKey("Black", "230"), std::nullopt);
    EXPECT_EQ(channel.fBlack, 200) << "black does not pass white";
    EXPECT_EQ(dialog.SetKey("White", "3"), std::nullopt);
    EXPECT_EQ(channel.fWhite, 200);
    drag(pOutput, 255, 100);
    EXPECT_EQ(channel.fOutWhite, 100);
    QTest::mouseDClick(pInput, Qt::LeftButton, {}, {60, 12});
    EXPECT_EQ(channel.fBlack, 0);
    EXPECT_EQ(channel.fGamma, 1);
    EXPECT_EQ(channel.fWhite, 255);
    EXPECT_EQ(channel.fOutWhite, 100);
}

#include "ViewTestKit.h"

#include "view/ZoomLadder.h"

#include <QScrollBar>
#include <QWheelEvent>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

using namespace kestrune;
using namespace kestrune::test;
using testing::ElementsAre;

namespace {

std::vector<float> Walk(CPaintView& view, int nCommand, int nSteps)
{
    std::vector<float> a;
    for (int i = 0; i < nSteps; i++) {
        EXPECT_TRUE(view.RunCommand(nCommand));
        a.push_back(view.GetZoom());
    }
    return a;
}

void Wheel(CPaintView& view, CPoint pt, int nTurn, Qt::KeyboardModifiers modifiers)
{
    const QPointF pos = view.PointToViewport(pt);
    QWheelEvent event(pos, view.viewport()->mapToGlobal(pos), {}, QPoint(0, nTurn), Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view.viewport(), &event);
}

} // namespace

TEST(Zoom, BothLaddersAndTheirAsymmetry)
{
    Picture picture(40, 30);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 200, 150);
    EXPECT_EQ(view.GetZoom(), 1.0f);
    view.SetZoom(0.125f);
    EXPECT_THAT(Walk(view, 30063, 27), ElementsAre(.25f, .5f, .75f, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 13, 15, 17, 19, 21, 23, 25, 27, 29,
                                                   31, 32, 32, 32, 32));
    EXPECT_THAT(Walk(view, 30064, 26), ElementsAre(30, 28, 26, 24, 22, 20, 18, 16, 14, 12, 10, 8, 7, 6, 5, 4, 3, 2, 1, .75f, .5f, .25f,
                                                   .125f, .125f, .125f, .125f));
    EXPECT_GE(host.m_nZoomChanges, 50);
    view.RunCommand(30066);
    EXPECT_EQ(view.GetZoom(), 1.0f);
}

TEST(Zoom, RuleOfTheZoomBox)
{
    const std::pair<float, float> aCases[] = {{1.5f, 1}, {0.75f, .75f}, {0.8f, .75f}, {0.33f, .33f}, {2.99f, 2}, {100, 32}, {0, .125f},
                                              {-3, .125f}, {NAN, .125f}, {32.5f, 32}, {31.9f, 31}};
    for (const auto& [fTyped, fZoom] : aCases)
        EXPECT_EQ(ZoomRule(fTyped), fZoom) << fTyped;
    // from a fitted zoom the ladders join their usual steps
    EXPECT_EQ(ZoomInStep(0.6f), 0.75f);
    EXPECT_EQ(ZoomOutStep(0.3f), 0.125f);
}

TEST(Zoom, MagnifierStepsItsOwnWay)
{
    EXPECT_EQ(MagnifierStep(1, true), 2);
    EXPECT_EQ(MagnifierStep(1, false), .75f);
    EXPECT_EQ(MagnifierStep(9, true), 10);
    EXPECT_EQ(MagnifierStep(11, false), 10);
    EXPECT_EQ(MagnifierStep(.5f, true), .75f);
    EXPECT_EQ(MagnifierStep(.25f, true), .5f);
    EXPECT_EQ(MagnifierStep(.25f, false), .125f);
    EXPECT_EQ(MagnifierStep(.125f, false), .125f);
    EXPECT_EQ(MagnifierStep(32, true), 32);

    Picture picture(400, 300);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 200, 150);
    view.ZoomAt(true, {150, 20});
    EXPECT_EQ(view.GetZoom(), 2);
    const CPoint centre = view.ImageToClient(CPoint{150, 20}); // was at scroll 0, zoom 1
    const CSize client = view.GetClientSize();
    EXPECT_EQ(centre.x, client.cx / 2);
    EXPECT_EQ(centre.y, 40); // the top edge stops it
    view.ZoomAt(true, {centre.x, centre.y + 200});
    EXPECT_EQ(view.GetZoom(), 3);
}

TEST(Zoom, CentreStays)
{
    Picture picture(1000, 800);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 217, 163);
    view.ScrollToPosition({300, 500});
    const CSize client = view.GetClientSize();
    const CPoint before = view.ClientToImage(CPoint{client.cx / 2, client.cy / 2});
    for (int nCommand : {30063, 30063, 30063, 30064, 30063, 30064, 30064, 30064}) {
        view.RunCommand(nCommand);
        const CPoint now = view.ClientToImage(CPoint{client.cx / 2, client.cy / 2});
        EXPECT_NEAR(now.x, before.x, 1) << view.GetZoom();
        EXPECT_NEAR(now.y, before.y, 1) << view.GetZoom();
    }
    view.SetZoom(0.125f); // all in sight: the middle of the picture from here on
    view.SetZoom(4);
    EXPECT_EQ(view.GetScrollPosition().x, 1000 * 4 / 2 - client.cx / 2);
}

TEST(Zoom, FitPlacesTheFrameAndFollowsTheLongerSide)
{
    CNotingHost host;
    host.m_space = {1020, 738};
    Picture wide(2000, 1000), tall(1000, 2000), small(100, 50);
    CPaintView a(wide.doc, host), b(tall.doc, host), c(small.doc, host);
    ShowView(a, 300, 200);
    a.RunCommand(30065);
    EXPECT_EQ(host.m_rcFrame, QRect(5, 5, 1000, 700));
    EXPECT_EQ(a.GetZoom(), 984.0f / 2000.0f);
    host.m_bRulers = true;
    ShowView(b, 300, 200);
    b.RunCommand(30065);
    EXPECT_EQ(host.m_rcFrame, QRect(5, 5, 984, 684));
    EXPECT_EQ(b.GetZoom(), 652.0f / 2000.0f);
    ShowView(c, 300, 200);
    c.RunCommand(30065);
    EXPECT_EQ(c.GetZoom(), 9.0f); // 9.68 cut
}

TEST(Zoom, FrameFollowsWhereTheUserWantsIt)
{
    Picture picture(300, 200);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 300, 200);
    EXPECT_EQ(host.m_sizeFrame, (CSize{300, 200})); // a new picture
    view.SetZoom(2);
    EXPECT_EQ(host.m_sizeFrame, (CSize{300, 200}));
    host.m_bFollow = true;
    view.SetZoom(3);
    EXPECT_EQ(host.m_sizeFrame, (CSize{900, 600}));
    view.SetZoom(4);
    EXPECT_EQ(host.m_sizeFrame, (CSize{1000 - 16 - 12, 700 - 16 - 30}));
    host.m_bRulers = true;
    view.SetZoom(5);
    EXPECT_EQ(host.m_sizeFrame, (CSize{1000 - 16 - 12 - 16, 700 - 16 - 30 - 16}));
}

TEST(Zoom, WheelKeepsThePointUnderThePointer)
{
    Picture picture(2000, 1500);
    CNotingHost host;
    CPaintView view(picture.doc, host);
    ShowView(view, 400, 300);
    view.ScrollToPosition({700, 600});
    const CPoint pt{101, 203};
    const CPoint fixed = view.ClientToImage(pt);
    for (int nTurn : {120, 120, 60, 60, 240, -120, -240, -120, -120}) {
        Wheel(view, pt, nTurn, Qt::ControlModifier);
        const CPoint now = view.ClientToImage(pt);
        EXPECT_NEAR(now.x, fixed.x, 1) << view.GetZoom();
        EXPECT_NEAR(now.y, fixed.y, 1) << view.GetZoom();
    }
    EXPECT_EQ(view.GetZoom(), 1); // five steps up, two of them half turned, and five down

    view.SetZoom(1);
    view.ScrollToPosition({700, 600});
    Wheel(view, pt, -120, Qt::NoModifier);
    EXPECT_EQ(view.GetScrollPosition(), (CPoint{700, 600 + 16 * QApplication::wheelScrollLines()}));
    Wheel(view, pt, 120, Qt::ShiftModifier);
    EXPECT_EQ(view.GetScrollPosition().x, 700 - 16 * QApplication::wheelScrollLines());
}

TEST(Zoom, ViewsOfOneDocumentStayInStep)
{
    Picture picture(300, 200);
    CNotingHost host, other;
    CPaintView a(picture.doc, host);
    {
        CPaintView b(picture.doc, other);
        ShowView(a, 100, 80);
        ShowView(b, 150, 90);
        other.m_nZoomChanges = 0;
        a.SetZoom(2);
        EXPECT_EQ(b.GetZoom(), 1); // each its own zoom, but told
        EXPECT_EQ(other.m_nZoomChanges, 1);
        picture.doc.m_pImage->m_Bitmap.Trim(0, 0, 120, 70);
        picture.doc.m_pImage->m_nWidth = 120;
        picture.doc.m_pImage->m_nHeight = 70;
        picture.doc.m_pImage->Site().SizeChanged();
        EXPECT_EQ(a.horizontalScrollBar()->maximum() + a.GetClientSize().cx, 240);
        EXPECT_FALSE(b.HasHScroll());
    }
    EXPECT_EQ(ViewsOf(picture.doc).size(), 1u);
    other.m_nZoomChanges = 0;
    picture.doc.m_pImage->Site().SizeChanged(); // the view that closed is not asked
    EXPECT_EQ(other.m_nZoomChanges, 0);
}

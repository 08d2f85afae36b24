// The history box: driven by events, over a picture with real records.

#include "base/Messages.h"
#include "undo/UndoKinds.h"
#include "undo/UndoStack.h"
#include "undo/gui/HistoryBox.h"
#include "undo/gui/HistoryModel.h"

#include <QApplication>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

using namespace kestrune;

namespace {

/// A picture whose site is the box, as the view makes it, with one pixel of its own colour for each act.
class CBoxSite : public CImageSite {
public:
    explicit CBoxSite(CHistoryBox& box, CPaintImage& image) : m_box(box), m_image(image) {}
    void SyncHistoryBox(int nMode) override { m_box.Sync(m_image, nMode); }
    void RepaintAll() override { m_nRepaints++; }
    CHistoryBox& m_box;
    CPaintImage& m_image;
    int m_nRepaints = 0;
};

class HistoryBox : public testing::Test {
protected:
    HistoryBox()
    {
        SetHistoryLimit(20);
        m_image.Create(8, 8, FILL_WHITE, COLOR_RGB);
        m_image.SetSite(&m_site);
        RecordFirstState(m_image, UNDO_NEW);
        m_box.resize(200, 140);
        m_box.ShowImage(&m_image);
        m_box.show();
        QApplication::setActiveWindow(&m_box);
    }
    ~HistoryBox() override
    {
        m_box.ShowImage(nullptr);
        SetHistoryLimit(c_nDefaultHistoryLimit);
    }
    void Act(int nAct, std::uint32_t nKind = UNDO_BRUSH)
    {
        PushRect(m_image, 0, 0, 8, 8, nKind);
        m_image.m_Bitmap.WriteRow(0)[0] = static_cast<std::uint8_t>(nAct);
    }
    int State() { return m_image.m_Bitmap.Row(0)[0]; }
    QString Rows() const
    {
        QString strRows;
        for (int i = 0; i < m_box.model()->rowCount(); i++)
            strRows += m_box.model()->index(i, 0).data(CHistoryModel::ROLE_UNDONE).toBool() ? u'-' : i == m_box.CurrentRow() ? u'*' : u'.';
        return strRows;
    }
    QString Text(int nRow) const { return m_box.model()->index(nRow, 0).data().toString(); }
    void Click(int nRow, Qt::KeyboardModifiers modifiers = {})
    {
        const QModelIndex index = m_box.model()->index(nRow, 0);
        m_box.scrollTo(index);
        QTest::mouseClick(m_box.viewport(), Qt::LeftButton, modifiers, m_box.visualRect(index).center());
    }

    CHistoryBox m_box;
    CPaintImage m_image;
    CBoxSite m_site{m_box, m_image};
};

} // namespace

TEST_F(HistoryBox, AClickTakesThePictureToThatRow)
{
    for (int i = 1; i <= 4; i++)
        Act(i, 20 + static_cast<std::uint32_t>(i));
    EXPECT_EQ(Rows(), QStringLiteral("....*"));
    EXPECT_EQ(Text(0), QStringLiteral("<< 새로운 이미지 >>"));
    EXPECT_EQ(Text(3), QStringLiteral("[브러시] 지우개 도구"));
    Click(2);
    EXPECT_EQ(State(), 2);
    EXPECT_EQ(Rows(), QStringLiteral("..*--"));
    EXPECT_EQ(m_site.m_nRepaints, 1);
    Click(2);
    Click(2, Qt::ControlModifier);
    EXPECT_EQ(m_site.m_nRepaints, 1) << "the current row: nothing happens";
    EXPECT_TRUE(m_box.selectionModel()->isRowSelected(2)) << "Ctrl does not take the selection away";
    Click(4);
    EXPECT_EQ(State(), 4);
    Click(0);
    EXPECT_EQ(State(), 255);
    EXPECT_EQ(Rows(), QStringLiteral("*----"));
    EXPECT_EQ(m_image.m_UndoList.size(), 1u) << "the picture's origin is never undone";
    Act(9);
    EXPECT_EQ(Rows(), QStringLiteral(".*")) << "what redo would have brought back is gone";
}

TEST_F(HistoryBox, KeysWalkThroughTimeAndLettersDoNot)
{
    for (int i = 1; i <= 3; i++)
        Act(i);
    m_box.setFocus();
    QTest::keyClick(&m_box, Qt::Key_Up);
    EXPECT_EQ(State(), 2);
    QTest::keyClick(&m_box, Qt::Key_Home);
    EXPECT_EQ(Rows(), QStringLiteral("*---"));
    QTest::keyClick(&m_box, Qt::Key_Down);
    EXPECT_EQ(State(), 1);
    QTest::keyClicks(&m_box, QStringLiteral("[<"));
    EXPECT_EQ(State(), 1);
    QTest::keyClick(&m_box, Qt::Key_End);
    EXPECT_EQ(State(), 3);
}

TEST_F(HistoryBox, FollowsTheCommandsAndTheLimit)
{
    SetHistoryLimit(3);
    for (int i = 1; i <= 6; i++)
        Act(i);
    EXPECT_EQ(Rows(), QStringLiteral("...*")) << "one more than the limit stands";
    EXPECT_EQ(Text(0), QStringLiteral("[브러시] 브러시 도구")) << "the first state went with the oldest row";
    UndoCommand(m_image);
    UndoCommand(m_image);
    EXPECT_EQ(Rows(), QStringLiteral(".*--"));
    EXPECT_EQ(m_box.currentIndex().row(), 1);
    RedoCommand(m_image);
    EXPECT_EQ(Rows(), QStringLiteral("..*-"));
    EXPECT_EQ(State(), 5);
    Act(7);
    EXPECT_EQ(Rows(), QStringLiteral("...*")) << "three stood, which the limit allows";
    Click(0);
    EXPECT_EQ(State(), 3);
}

TEST_F(HistoryBox, EachPictureHasItsOwnRows)
{
    Act(1);
    Act(2);
    UndoCommand(m_image);
    CPaintImage other;
    other.Create(4, 4, FILL_BLACK, COLOR_RGB);
    RecordFirstState(other, UNDO_LOADED);
    m_box.ShowImage(&other);
    EXPECT_EQ(Rows(), QStringLiteral("*"));
    EXPECT_EQ(Text(0), QStringLiteral("<< 원본 이미지 >>"));
    Act(3); // in the picture that is not shown
    EXPECT_EQ(Rows(), QStringLiteral("*"));
    m_box.ShowImage(&m_image);
    EXPECT_EQ(Rows(), QStringLiteral("..*"));
    m_box.ShowImage(nullptr);
    EXPECT_EQ(Rows(), QString());
    QTest::keyClick(&m_box, Qt::Key_Up);
    EXPECT_EQ(State(), 3) << "an empty box acts on nothing";
}

TEST_F(HistoryBox, UndoneRowsAreDimAndTheCurrentOneStandsOut)
{
    Act(1);
    Act(2);
    UndoCommand(m_image);
    const QImage image = m_box.viewport()->grab().toImage();
    const auto darkest = [&](int nRow) {
        const QRect rc = m_box.visualRect(m_box.model()->index(nRow, 0));
        int nDarkest = 255;
        for (int y = rc.top(); y <= rc.bottom(); y++)
            for (int x = rc.left(); x < rc.left() + 100; x++)
                nDarkest = std::min(nDarkest, qGray(image.pixel(x, y)));
        return nDarkest;
    };
    EXPECT_LT(darkest(0) + 40, darkest(2));
    const QRect rc = m_box.visualRect(m_box.model()->index(1, 0));
    EXPECT_EQ(image.pixelColor(rc.right() - 3, rc.top() + 2), m_box.palette().color(QPalette::Active, QPalette::Highlight));
}

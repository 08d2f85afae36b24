#include "ui/SizableReBar.h"

#include <QApplication>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QMainWindow>
#include <QToolBar>

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace kestrune {
namespace {

constexpr char c_szSection[] = "Bands";
constexpr char c_szKey[] = "InformationBarStateInfo (v1.01)";

class ReBar : public testing::Test {
protected:
    ReBar()
    {
        for (int i = 0; i < 3; i++) {
            m_bars[i] = new QToolBar(&m_frame);
            m_bars[i]->setObjectName(QString::number(i));
            m_bars[i]->addWidget(m_boxes[i] = new QCheckBox(QString::number(i)));
            m_bars[i]->setFixedHeight(30 + i);
            m_bars[i]->setMovable(false);
            m_rebar.AddBand(m_bars[i], 0xA0 + i, QString::number(i));
        }
        m_frame.resize(600, 400);
        m_frame.show();
        QCoreApplication::processEvents();
    }
    bool Load(const std::string& text)
    {
        CMemoryProfile profile;
        profile.WriteString(c_szSection, c_szKey, text);
        const bool bUsed = m_rebar.LoadState(profile, c_szSection);
        QCoreApplication::processEvents();
        return bUsed;
    }
    std::string Text() const { return FormatBands(m_rebar.Bands()); }
    /// Ids in their order, "/" before one that starts a row, "-" before a hidden one.
    std::string Shape() const
    {
        std::string result;
        for (const ReBarBand& band : m_rebar.Bands())
            result += std::string(band.nStyle & ReBarBand::BREAK ? "/" : "") + (band.nStyle & ReBarBand::HIDDEN ? "-" : "") + std::to_string(band.nId - 0xA0);
        return result;
    }

    QMainWindow m_frame;
    CSizableReBar m_rebar{m_frame};
    std::array<QToolBar*, 3> m_bars{};
    std::array<QCheckBox*, 3> m_boxes{};
};

TEST_F(ReBar, WritesAndRestoresOrderRowsWidthsAndHiddenBands)
{
    EXPECT_EQ(Text(), "wID=00A0,cx=600,fStyle=00000001\nwID=00A1,cx=600,fStyle=00000001\nwID=00A2,cx=600,fStyle=00000001");

    // The third and the first share a row, in which the first of the two has a width of its own.
    ASSERT_TRUE(Load("wID=00A2,cx=240,fStyle=00000001\nwID=00A0,cx=360,fStyle=00000000\nwID=00A1,cx=600,fStyle=00000009"));
    EXPECT_EQ(Shape(), "/20/-1");
    EXPECT_TRUE(m_bars[1]->isHidden());
    EXPECT_EQ(m_bars[2]->y(), m_bars[0]->y());
    EXPECT_EQ(m_bars[2]->width(), 240);
    EXPECT_EQ(m_bars[0]->width(), 360);
    EXPECT_EQ(m_bars[2]->height(), 32);

    CMemoryProfile profile;
    m_rebar.SaveState(profile, c_szSection);
    m_rebar.Reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(Shape(), "/0/1/2");
    EXPECT_EQ(m_bars[2]->minimumWidth(), 0);
    EXPECT_FALSE(m_bars[1]->isHidden());
    EXPECT_EQ(m_bars[1]->y(), m_bars[0]->y() + m_bars[0]->height());
    ASSERT_TRUE(m_rebar.LoadState(profile, c_szSection));
    QCoreApplication::processEvents();
    EXPECT_EQ(Shape(), "/20/-1");
    EXPECT_EQ(m_bars[2]->width(), 240);
}

TEST_F(ReBar, DamagedTextsChangeNothing)
{
    const std::string before = Text();
    for (const char* pszText : {"", "\n\n", "wID=", "hello", "wID=00A1", "wID=00A1,cx=5", "wID=00A1,cx=,fStyle=00000009", "wID=00A1,cx=-5,fStyle=00000009",
                                "wID=00A1,cx=99999999999,fStyle=00000009", "wID=00A1,cx=40000,fStyle=00000009", "wID=100A1,cx=5,fStyle=00000009",
                                "wID=00A1,cx=5,fStyle=00000009,", "wID=00A1;cx=5;fStyle=00000009", "wID=-0A1,cx=5,fStyle=00000009",
                                "wID=00A1,cx=5,fStyle=1000000009", "wID=00B1,cx=5,fStyle=00000009", "wID=0000,cx=5,fStyle=00000009"}) {
        EXPECT_FALSE(Load(pszText)) << pszText;
        EXPECT_EQ(Text(), before) << pszText;
    }
}

TEST_F(ReBar, UnknownAndMissingBandsLeaveTheOthersTheirPlaces)
{
    // The two that are named trade places around the one that is not; of two lines for a band the first counts.
    ASSERT_TRUE(Load("wID=00B7,cx=9,fStyle=00000008\nwID=00A2,cx=600,fStyle=FFFFFFF1\nrubbish\nwID=00A0,cx=600,fStyle=00000009\nwID=00A2,cx=1,fStyle=00000008"));
    EXPECT_EQ(Shape(), "/2/1/-0");
    // A line that is cut off costs its own band alone.
    ASSERT_TRUE(Load("wID=00A0,cx=600,fStyle=00000001\nwID=00A2,cx=60"));
    EXPECT_EQ(Shape(), "/2/1/0");
}

TEST_F(ReBar, TheMenuShowsAndHidesBands)
{
    const auto openMenu = [](QWidget& widget, QContextMenuEvent::Reason reason) {
        QContextMenuEvent press(reason, QPoint(2, 2), widget.mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(&widget, &press);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    };
    QMenu* pMenu = openMenu(*m_bars[0], QContextMenuEvent::Mouse);
    ASSERT_TRUE(pMenu);
    ASSERT_EQ(pMenu->actions().size(), 3);
    EXPECT_EQ(pMenu->actions()[1]->text(), QStringLiteral("1"));
    EXPECT_TRUE(pMenu->actions()[1]->isChecked());
    pMenu->actions()[1]->trigger();
    pMenu->close();
    EXPECT_EQ(Shape(), "/0/-1/2");

    // The menu key on something inside a band.
    QCoreApplication::processEvents();
    pMenu = openMenu(*m_boxes[2], QContextMenuEvent::Keyboard);
    ASSERT_TRUE(pMenu);
    EXPECT_FALSE(pMenu->actions()[1]->isChecked());
    pMenu->actions()[1]->trigger();
    pMenu->actions()[2]->trigger(); // the band from which the menu was opened
    pMenu->close();
    EXPECT_EQ(Shape(), "/0/1/-2");
}

} // namespace
} // namespace kestrune

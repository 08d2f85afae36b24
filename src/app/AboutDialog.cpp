#include "app/AboutDialog.h"

#include "base/StringTable.h"
#include "ui/Icons.h"

#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace kestrune {

namespace {

constexpr int c_nTick = 33; // milliseconds
constexpr qreal c_nStep = 0.7; // pixels a tick

/// Lines of text that rise without end; the wheel moves them, and they stand while the pointer is over them.
class CCreditsView : public QWidget {
public:
    CCreditsView(const QString& strText, QWidget* pParent)
        : QWidget(pParent)
        , m_lines(strText.split(u'\n'))
    {
        setFixedHeight(150);
        setMinimumWidth(340);
        setAccessibleName(strText);
        auto* pTimer = new QTimer(this);
        connect(pTimer, &QTimer::timeout, this, [this] {
            if (!underMouse())
                Scroll(c_nStep);
        });
        pTimer->start(c_nTick);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().base());
        painter.setPen(palette().color(QPalette::Text));
        const int nLine = fontMetrics().lineSpacing();
        qreal y = height() - m_fOffset;
        for (const QString& strLine : m_lines) {
            if (y > -nLine && y < height())
                painter.drawText(QRectF(0, y, width(), nLine), Qt::AlignCenter, strLine);
            y += nLine;
        }
    }
    void wheelEvent(QWheelEvent* pEvent) override
    {
        Scroll(-pEvent->angleDelta().y() / 6.0);
        pEvent->accept();
    }

private:
    void Scroll(qreal fBy)
    {
        const qreal fLength = height() + m_lines.size() * fontMetrics().lineSpacing();
        m_fOffset += fBy;
        if (m_fOffset > fLength)
            m_fOffset = 0;
        if (m_fOffset < 0)
            m_fOffset = fLength;
        update();
    }

    QStringList m_lines;
    qreal m_fOffset = 40;
};

} // namespace

CAboutDialog::CAboutDialog(QWidget* pParent)
    : CPaintDialog(pParent)
{
    setWindowTitle(TextOf(IDS_ABOUT_TITLE));
    auto* pColumn = new QVBoxLayout;
    pColumn->setSpacing(6);
    auto* pIcon = new QLabel(this);
    pIcon->setPixmap(LoadPixmapIcon(QStringLiteral("app/kestrune"), {64, 64}, devicePixelRatioF()));
    pIcon->setAlignment(Qt::AlignCenter);
    pColumn->addWidget(pIcon);
    auto* pName = new QLabel(TextOf(IDS_PRODUCT_NAME) + QStringLiteral("  ") + QStringLiteral(KESTRUNE_VERSION), this);
    QFont font = pName->font();
    font.setPointSizeF(font.pointSizeF() * 1.3);
    font.setBold(true);
    pName->setFont(font);
    pName->setAlignment(Qt::AlignCenter);
    pColumn->addWidget(pName);
    auto* pWhat = new QLabel(TextOf(IDS_ABOUT_WHAT), this);
    pWhat->setAlignment(Qt::AlignCenter);
    pColumn->addWidget(pWhat);
    pColumn->addSpacing(6);
    pColumn->addWidget(new CCreditsView(TextOf(IDS_ABOUT_CREDITS), this));
    Body()->addLayout(pColumn);
}

} // namespace kestrune

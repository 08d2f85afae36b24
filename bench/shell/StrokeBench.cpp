// Strokes through a shown view, from the mouse's events to the painted window: a quick scribble must not fall behind the hand, and
// the first dab must not be later on a large picture than on a small one.
#include "../Harness.h"

#include "doc/PaintImage.h"
#include "resources/PaintSources.h"
#include "tools/ToolOptions.h"
#include "tools/ToolRegistry.h"
#include "tools/ToolTable.h"
#include "undo/UndoStack.h"
#include "view/PaintView.h"

#include <QApplication>
#include <QMouseEvent>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <cmath>
#include <memory>
#include <thread>

using namespace kestrune;
using namespace kestrune::bench;

namespace {

constexpr int c_nEvents = 2000;
constexpr int c_nBrush = 100;
constexpr auto c_period = std::chrono::milliseconds(1); ///< of the quickest mice

class CNoDocumentHost : public CDocumentHost {
public:
    std::optional<NewImageParams> AskNewImage() override { return {}; }
    std::optional<std::filesystem::path> AskSaveName(const std::string&, bool, int&) override { return {}; }
};

void SetSoftBrush()
{
    g_activeBrush = {std::vector<std::uint8_t>(c_nBrush * c_nBrush), c_nBrush, c_nBrush, {c_nBrush / 2.0, 0}, {0, c_nBrush / 2.0}, 20};
    for (int y = 0; y < c_nBrush; y++)
        for (int x = 0; x < c_nBrush; x++)
            g_activeBrush.aMask[y * c_nBrush + x]
                = static_cast<std::uint8_t>(255 * std::clamp(2 - std::hypot(x - 49.5, y - 49.5) / 25, 0.0, 1.0));
}

/// A shown view of 1600 x 1000 over a picture, which counts what the window is painted.
class CStrokeScene : public QObject {
public:
    CStrokeScene(int nWidth, int nHeight, float fZoom)
        : m_doc(m_docHost)
    {
        m_doc.m_pImage = std::make_unique<CPaintImage>();
        m_doc.m_pImage->Create(nWidth, nHeight, FILL_WHITE, COLOR_RGB);
        for (int y = 0; y < nHeight; y++) // not a plain one, whose rows are all the same memory
            std::memset(m_doc.m_pImage->m_Bitmap.WriteRow(y), y, m_doc.m_pImage->m_Bitmap.GetRowBytes());
        m_doc.m_pImage->m_BaseBitmap.Copy(m_doc.m_pImage->m_Bitmap);
        RecordFirstState(*m_doc.m_pImage, 2);
        m_pView = std::make_unique<CPaintView>(m_doc, m_host);
        m_pView->resize(1600, 1000);
        m_pView->OnInitialUpdate();
        m_pView->show();
        m_pView->OnActivateView(true);
        m_pView->SetZoom(fZoom);
        m_pView->viewport()->installEventFilter(this);
        QApplication::processEvents();
        SetSoftBrush();
        SetToolOption(ToolOption::BrushFade, 0);
        g_nCurrentTool = TOOL_BRUSH;
    }
    ~CStrokeScene() override { Release(); }

    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::MouseMove || pEvent->type() == QEvent::MouseButtonPress)
            m_nSeen++;
        else if (pEvent->type() == QEvent::Paint)
            m_nPainted = m_nSeen;
        return false;
    }

    static QPointF PathPoint(int i)
    {
        const double t = i * 0.05; // some 60 pixels from event to event
        return {800 + 700 * std::sin(t * 1.7), 500 + 430 * std::sin(t * 2.3 + 1)};
    }
    /// Queues an event. It is made when its turn comes: the toolkit's events cannot be made on another thread.
    void Post(QEvent::Type type, int i)
    {
        QMetaObject::invokeMethod(this, [=, this] { Send(type, i); }, Qt::QueuedConnection);
    }
    void Send(QEvent::Type type, int i)
    {
        QWidget* pArea = m_pView->viewport();
        const QPointF pt = PathPoint(i);
        QMouseEvent event(type, pt, pt, pt, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
        QApplication::sendEvent(pArea, &event);
    }
    /// Runs the event loop until the last of the events that were posted is seen in the window.
    void WaitPainted(int nEvents)
    {
        while (m_nPainted < nEvents)
            QApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    /// All events but the last, at the pace of a quick mouse: the sender does not wait for the program.
    void Scribble()
    {
        Release();
        m_nSeen = m_nPainted = 0;
        Post(QEvent::MouseButtonPress, 0);
        std::atomic<bool> bSent = false;
        std::thread hand([&] {
            auto due = std::chrono::steady_clock::now();
            for (int i = 1; i < c_nEvents - 1; i++) {
                std::this_thread::sleep_until(due += c_period);
                Post(QEvent::MouseMove, i);
            }
            bSent = true;
        });
        while (!bSent)
            QApplication::processEvents();
        hand.join();
        m_bDown = true;
    }
    void LastEvent()
    {
        Post(QEvent::MouseMove, c_nEvents - 1);
        WaitPainted(c_nEvents);
    }
    void Press()
    {
        m_nSeen = m_nPainted = 0;
        Post(QEvent::MouseButtonPress, ++m_nPress);
        WaitPainted(1);
        m_bDown = true;
    }
    void Release()
    {
        if (!m_bDown)
            return;
        m_bDown = false;
        Post(QEvent::MouseButtonRelease, m_nPress);
        QApplication::processEvents();
        HistoryBytes(*m_doc.m_pImage); // what settles on the other core is over
        QApplication::processEvents();
    }

private:
    CNoDocumentHost m_docHost;
    CPaintDoc m_doc;
    CViewHost m_host;
    std::unique_ptr<CPaintView> m_pView;
    int m_nSeen = 0, m_nPainted = 0, m_nPress = 0;
    bool m_bDown = false;
};

const Group g_scribble("scribble", [] {
    for (const float fZoom : {1.0f, 0.33f}) {
        const auto pScene = std::make_shared<CStrokeScene>(4000, 3000, fZoom);
        Register({"scribble of 2000 events, size 100, 12 MP, zoom " + std::string(fZoom < 1 ? "0.33" : "1") + ": last dab painted / 50 ms", 1,
                  [=] { pScene->LastEvent(); }, [] { std::this_thread::sleep_for(std::chrono::milliseconds(50)); }, [=] { pScene->Scribble(); }});
    }
});

const Group g_firstDab("first dab", [] {
    const auto pLarge = std::make_shared<CStrokeScene>(10000, 10000, 1.0f), pSmall = std::make_shared<CStrokeScene>(1600, 1000, 1.0f);
    const auto rest = [=] {
        pLarge->Release();
        pSmall->Release();
    };
    // One tool serves both windows, so the stroke in the one ends before that in the other begins.
    Register({"press to the first dab in the window, 100 MP / the same at 1.6 MP", 2, [=] { pLarge->Press(); }, [=] { pSmall->Press(); }, rest, rest});
});

} // namespace

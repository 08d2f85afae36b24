#include "filters/gui/FilterRunner.h"

#include "ui/Dialog.h"

#include <QAbstractScrollArea>
#include <QGuiApplication>
#include <QPointer>

#include <chrono>
#include <functional>
#include <future>

namespace kestrune {

namespace {

using namespace std::chrono_literals;

constexpr auto c_waitCursorAfter = 300ms;
constexpr auto c_eventsEvery = 10ms;

int g_nRunning = 0;

struct CRunning {
    CRunning() { ++g_nRunning; }
    ~CRunning() { --g_nRunning; }
    CRunning(const CRunning&) = delete;
    CRunning& operator=(const CRunning&) = delete;
};

/// Wait cursor and a frozen canvas, for as long as it lives.
class CWaiting {
public:
    explicit CWaiting(QWidget* pCanvas)
        : m_pCanvas(pCanvas)
    {
        if (const auto* pArea = qobject_cast<QAbstractScrollArea*>(pCanvas))
            m_pCanvas = pArea->viewport();
        if (m_pCanvas)
            m_pCanvas->setUpdatesEnabled(false);
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~CWaiting()
    {
        QGuiApplication::restoreOverrideCursor();
        if (m_pCanvas)
            m_pCanvas->setUpdatesEnabled(true);
    }
    CWaiting(const CWaiting&) = delete;
    CWaiting& operator=(const CWaiting&) = delete;

private:
    QPointer<QWidget> m_pCanvas;
};

} // namespace

bool IsFilterRunning() { return g_nRunning > 0; }

void RunWithWaitCursor(const std::function<void()>& work, QWidget* pCanvas)
{
    const CRunning running;
    if (CPaintDialog::IsDriven()) { // a script's timers stand still but for its own wait statement
        work();
        return;
    }
    std::future<void> done = std::async(std::launch::async, std::cref(work));
    if (done.wait_for(c_waitCursorAfter) != std::future_status::ready) {
        const CWaiting waiting(pCanvas);
        do
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        while (done.wait_for(c_eventsEvery) != std::future_status::ready);
    }
    done.get();
}

} // namespace kestrune

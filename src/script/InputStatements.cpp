#include "script/ScriptContext.h"

#include "script/ScriptFrame.h"
#include "script/VirtualKeys.h"
#include "view/PaintView.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>

#include <cmath>
#include <limits>

namespace kestrune::statements {

namespace {

/// What a mouse statement says, and the view that it goes to.
struct MouseInput {
    CPaintView* pView = nullptr;
    CPoint pt{};
    Qt::KeyboardModifiers modifiers{};
    Qt::MouseButton button = Qt::LeftButton;
};

/// Reads `X Y` and the words that may follow it, a button only where `bButton` says so. Fails without a picture.
StatementResult ReadMouse(const CScriptContext& context, const QStringList& words, MouseInput& input, bool bButton = false)
{
    constexpr int nFar = 1'000'000; // image pixels; far outside any picture, and a zoom of 32 keeps it inside an int
    input.pView = context.View();
    if (!input.pView)
        return QStringLiteral("no document is open");
    if (const StatementResult failure = ReadNumber(words[0], -nFar, nFar, input.pt.x))
        return failure;
    if (const StatementResult failure = ReadNumber(words[1], -nFar, nFar, input.pt.y))
        return failure;
    input.modifiers = context.heldModifiers;
    for (const QString& strWord : words.mid(2)) {
        if (strWord == u"ctrl")
            input.modifiers |= Qt::ControlModifier;
        else if (strWord == u"shift")
            input.modifiers |= Qt::ShiftModifier;
        else if (bButton && strWord == u"left")
            input.button = Qt::LeftButton;
        else if (bButton && strWord == u"right")
            input.button = Qt::RightButton;
        else
            return QStringLiteral("\"%1\" is no word of this statement").arg(strWord);
    }
    return {};
}

/// One event of the statement; `button` is the one that changes, `buttons` those that are down afterwards.
void Send(const MouseInput& input, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QWidget* pViewport = input.pView->viewport();
    const QPointF pt = input.pView->PointToViewport(input.pView->ImageToClient(input.pt));
    QMouseEvent event(type, pt, pViewport->mapTo(pViewport->window(), pt), pViewport->mapToGlobal(pt), button, buttons, input.modifiers);
    QApplication::sendEvent(pViewport, &event);
}

StatementResult SendKey(CScriptContext& context, const QStringList& words, bool bDown)
{
    int nCode = 0;
    if (const StatementResult failure = ReadNumber(words[0], 1, 255, nCode))
        return failure;
    const std::optional<ToolkitKey> key = KeyOfVirtualCode(nCode);
    if (!key)
        return QStringLiteral("%1 is the number of no key").arg(nCode);
    const Qt::KeyboardModifier modifier = key->nKey == Qt::Key_Shift     ? Qt::ShiftModifier
                                          : key->nKey == Qt::Key_Control ? Qt::ControlModifier
                                          : key->nKey == Qt::Key_Alt     ? Qt::AltModifier
                                                                         : Qt::NoModifier;
    const Qt::KeyboardModifiers before = context.heldModifiers;
    context.heldModifiers.setFlag(modifier, bDown && modifier != Qt::NoModifier);
    QWidget* pTarget = context.View() ? static_cast<QWidget*>(context.View()) : QApplication::focusWidget();
    if (!pTarget)
        return QStringLiteral("no window takes the key");

    const bool bTypes = !(before & (Qt::ControlModifier | Qt::AltModifier));
    const QString strText = !bTypes ? QString() : before & Qt::ShiftModifier ? key->strText.toUpper() : key->strText;
    context.dialogs.Begin(std::nullopt);
    QKeyEvent event(bDown ? QEvent::KeyPress : QEvent::KeyRelease, key->nKey, before, strText);
    QApplication::sendEvent(pTarget, &event);
    return context.dialogs.End();
}

} // namespace

StatementResult Press(CScriptContext& context, const QStringList& words)
{
    MouseInput input;
    if (const StatementResult failure = ReadMouse(context, words, input, true))
        return failure;
    if (context.nHeldButton != Qt::NoButton)
        return QStringLiteral("a button is held already");
    context.nHeldButton = input.button;
    context.ptLast = input.pt;
    context.dialogs.Begin(std::nullopt);
    Send(input, QEvent::MouseButtonPress, input.button, input.button);
    return context.dialogs.End();
}

StatementResult Move(CScriptContext& context, const QStringList& words)
{
    MouseInput input;
    if (const StatementResult failure = ReadMouse(context, words, input))
        return failure;
    context.ptLast = input.pt;
    context.dialogs.Begin(std::nullopt);
    Send(input, QEvent::MouseMove, Qt::NoButton, context.nHeldButton);
    return context.dialogs.End();
}

StatementResult Release(CScriptContext& context, const QStringList& words)
{
    MouseInput input;
    if (const StatementResult failure = ReadMouse(context, words, input))
        return failure;
    if (context.nHeldButton == Qt::NoButton)
        return QStringLiteral("no button is held");
    context.dialogs.Begin(std::nullopt);
    if (input.pt != context.ptLast)
        Send(input, QEvent::MouseMove, Qt::NoButton, context.nHeldButton);
    context.ptLast = input.pt;
    Send(input, QEvent::MouseButtonRelease, std::exchange(context.nHeldButton, Qt::NoButton), Qt::NoButton);
    return context.dialogs.End();
}

StatementResult DoubleClick(CScriptContext& context, const QStringList& words)
{
    MouseInput input;
    if (const StatementResult failure = ReadMouse(context, words, input))
        return failure;
    if (context.nHeldButton != Qt::NoButton)
        return QStringLiteral("a button is held already");
    context.ptLast = input.pt;
    context.dialogs.Begin(std::nullopt);
    constexpr std::pair<QEvent::Type, bool> aSequence[] = {{QEvent::MouseButtonPress, true},
                                                           {QEvent::MouseButtonRelease, false},
                                                           {QEvent::MouseButtonDblClick, true},
                                                           {QEvent::MouseButtonRelease, false}};
    const QPointer<CPaintView> pAlive(input.pView);
    for (const auto& [type, bHeld] : aSequence)
        if (pAlive) // an event before may have closed it
            Send(input, type, Qt::LeftButton, bHeld ? Qt::LeftButton : Qt::NoButton);
    return context.dialogs.End();
}

StatementResult KeyDown(CScriptContext& context, const QStringList& words)
{
    return SendKey(context, words, true);
}

StatementResult KeyUp(CScriptContext& context, const QStringList& words)
{
    return SendKey(context, words, false);
}

StatementResult Wait(CScriptContext& context, const QStringList& words)
{
    int nMilliseconds = 0;
    if (const StatementResult failure = ReadNumber(words[0], 0, std::numeric_limits<int>::max(), nMilliseconds))
        return failure;
    context.dialogs.Begin(std::nullopt);
    QEventLoop loop;
    QTimer::singleShot(nMilliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    return context.dialogs.End();
}

StatementResult Zoom(CScriptContext& context, const QStringList& words)
{
    if (!context.View())
        return QStringLiteral("no document is open");
    bool bNumber = false;
    const float fZoom = words[0].toFloat(&bNumber);
    if (!bNumber || !std::isfinite(fZoom) || fZoom <= 0)
        return QStringLiteral("\"%1\" is no zoom factor").arg(words[0]);
    TypeZoom(context.app, fZoom);
    return {};
}

} // namespace kestrune::statements

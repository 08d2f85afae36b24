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

StatementResult NoDocument()
{
    return QStringLiteral("no document is open");
}

/// Reads `X Y` and the words that may follow it; a button only where `pButton` is given.
StatementResult ReadMouse(const QStringList& words, CPoint& pt, Qt::KeyboardModifiers& modifiers, Qt::MouseButton* pButton = nullptr)
{
    constexpr int nFar = 1'000'000; // image pixels; far outside any picture, and a zoom of 32 keeps it inside an int
    if (const StatementResult failure = ReadNumber(words[0], -nFar, nFar, pt.x))
        return failure;
    if (const StatementResult failure = ReadNumber(words[1], -nFar, nFar, pt.y))
        return failure;
    for (const QString& strWord : words.mid(2)) {
        if (strWord == u"ctrl")
            modifiers |= Qt::ControlModifier;
        else if (strWord == u"shift")
            modifiers |= Qt::ShiftModifier;
        else if (pButton && strWord == u"left")
            *pButton = Qt::LeftButton;
        else if (pButton && strWord == u"right")
            *pButton = Qt::RightButton;
        else
            return QStringLiteral("\"%1\" is no word of this statement").arg(strWord);
    }
    return {};
}

void SendMouse(CPaintView& view, QEvent::Type type, CPoint ptImage, Qt::MouseButton button, Qt::MouseButtons buttons,
               Qt::KeyboardModifiers modifiers)
{
    QWidget* pViewport = view.viewport();
    const QPointF pt = view.PointToViewport(view.ImageToClient(ptImage));
    QMouseEvent event(type, pt, pViewport->mapTo(pViewport->window(), pt), pViewport->mapToGlobal(pt), button, buttons, modifiers);
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
    CPaintView* pView = context.View();
    if (!pView)
        return NoDocument();
    CPoint pt;
    Qt::KeyboardModifiers modifiers = context.heldModifiers;
    Qt::MouseButton button = Qt::LeftButton;
    if (const StatementResult failure = ReadMouse(words, pt, modifiers, &button))
        return failure;
    if (context.nHeldButton != Qt::NoButton)
        return QStringLiteral("a button is held already");
    context.nHeldButton = button;
    context.ptLast = pt;
    context.dialogs.Begin(std::nullopt);
    SendMouse(*pView, QEvent::MouseButtonPress, pt, button, button, modifiers);
    return context.dialogs.End();
}

StatementResult Move(CScriptContext& context, const QStringList& words)
{
    CPaintView* pView = context.View();
    if (!pView)
        return NoDocument();
    CPoint pt;
    Qt::KeyboardModifiers modifiers = context.heldModifiers;
    if (const StatementResult failure = ReadMouse(words, pt, modifiers))
        return failure;
    context.ptLast = pt;
    context.dialogs.Begin(std::nullopt);
    SendMouse(*pView, QEvent::MouseMove, pt, Qt::NoButton, context.nHeldButton, modifiers);
    return context.dialogs.End();
}

StatementResult Release(CScriptContext& context, const QStringList& words)
{
    CPaintView* pView = context.View();
    if (!pView)
        return NoDocument();
    CPoint pt;
    Qt::KeyboardModifiers modifiers = context.heldModifiers;
    if (const StatementResult failure = ReadMouse(words, pt, modifiers))
        return failure;
    if (context.nHeldButton == Qt::NoButton)
        return QStringLiteral("no button is held");
    context.dialogs.Begin(std::nullopt);
    if (pt != context.ptLast)
        SendMouse(*pView, QEvent::MouseMove, pt, Qt::NoButton, context.nHeldButton, modifiers);
    context.ptLast = pt;
    const Qt::MouseButton button = std::exchange(context.nHeldButton, Qt::NoButton);
    SendMouse(*pView, QEvent::MouseButtonRelease, pt, button, Qt::NoButton, modifiers);
    return context.dialogs.End();
}

StatementResult DoubleClick(CScriptContext& context, const QStringList& words)
{
    const QPointer<CPaintView> pView(context.View());
    if (!pView)
        return NoDocument();
    CPoint pt;
    Qt::KeyboardModifiers modifiers = context.heldModifiers;
    if (const StatementResult failure = ReadMouse(words, pt, modifiers))
        return failure;
    if (context.nHeldButton != Qt::NoButton)
        return QStringLiteral("a button is held already");
    context.ptLast = pt;
    context.dialogs.Begin(std::nullopt);
    constexpr std::pair<QEvent::Type, bool> aSequence[] = {{QEvent::MouseButtonPress, true},
                                                           {QEvent::MouseButtonRelease, false},
                                                           {QEvent::MouseButtonDblClick, true},
                                                           {QEvent::MouseButtonRelease, false}};
    for (const auto& [type, bHeld] : aSequence)
        if (pView) // an event before may have closed it
            SendMouse(*pView, type, pt, Qt::LeftButton, bHeld ? Qt::LeftButton : Qt::NoButton, modifiers);
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
        return NoDocument();
    bool bNumber = false;
    const float fZoom = words[0].toFloat(&bNumber);
    if (!bNumber || !std::isfinite(fZoom) || fZoom <= 0)
        return QStringLiteral("\"%1\" is no zoom factor").arg(words[0]);
    TypeZoom(context.app, fZoom);
    return {};
}

} // namespace kestrune::statements

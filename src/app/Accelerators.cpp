#include "app/Accelerators.h"

#include "app/CommandTable.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QHash>
#include <QInputMethodEvent>
#include <QKeySequence>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace kestrune {

namespace {

/// The two-set layout from ㄱ (U+3131) to ㅣ (U+3163); a blank stands for clusters, which take two keys.
constexpr char c_szJamoKeys[] = "RR S  EEF       AQQ TTDWWCZXVGKOIOJPUPH   YN   BM L";

/// Latin keys by position: the codes that the window system gives to the keys of the four rows (the kernel's plus 8).
struct KeyRow {
    quint32 nFirst;
    const char* pszKeys;
};
constexpr KeyRow c_aKeyRows[] = {{10, "1234567890"}, {24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};

int KeyOfPosition(quint32 nScanCode)
{
    for (const KeyRow& row : c_aKeyRows)
        if (nScanCode >= row.nFirst && nScanCode < row.nFirst + qstrlen(row.pszKeys))
            return row.pszKeys[nScanCode - row.nFirst];
    return 0;
}

QHash<int, int> MakeShortcuts()
{
    QHash<int, int> shortcuts;
    const auto add = [&](std::string_view text, int nId) {
        const QKeySequence keys(QString::fromUtf8(text.data(), qsizetype(text.size())), QKeySequence::PortableText);
        if (!keys.isEmpty())
            shortcuts.insert(keys[0].toCombined(), nId);
    };
    for (const CommandRow& row : Commands())
        if (!row.shortcut.empty())
            add(row.shortcut, row.nId);
    for (const ShortcutAlias& alias : ShortcutAliases())
        add(alias.shortcut, alias.nId);
    return shortcuts;
}

int CommandOf(Qt::KeyboardModifiers modifiers, int nKey)
{
    static const QHash<int, int> shortcuts = MakeShortcuts();
    modifiers &= Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    if (nKey == Qt::Key_Plus) // on most keyboards a shifted key
        modifiers &= ~Qt::KeyboardModifiers(Qt::ShiftModifier);
    return shortcuts.value(QKeyCombination(modifiers, Qt::Key(nKey)).toCombined());
}

bool TakesText(const QWidget* pWidget)
{
    if (const auto* pCombo = qobject_cast<const QComboBox*>(pWidget))
        return pCombo->isEditable();
    return qobject_cast<const QLineEdit*>(pWidget) || qobject_cast<const QAbstractSpinBox*>(pWidget)
        || qobject_cast<const QTextEdit*>(pWidget) || qobject_cast<const QPlainTextEdit*>(pWidget);
}

/// Keys that a text box means for itself: bare keys, and those that cut, copy, paste, select all and undo.
bool IsTextKey(const QKeyEvent& event)
{
    if (!(event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)))
        return event.key() < Qt::Key_F1 || event.key() > Qt::Key_F35;
    for (const auto key : {QKeySequence::Copy, QKeySequence::Cut, QKeySequence::Paste, QKeySequence::SelectAll,
                           QKeySequence::Undo, QKeySequence::Redo})
        if (event.matches(key))
            return true;
    return false;
}

} // namespace

int CAccelerators::KeyOfJamo(QChar character)
{
    const int nIndex = character.unicode() - 0x3131;
    if (nIndex < 0 || nIndex >= int(sizeof c_szJamoKeys) - 1)
        return 0;
    const char key = c_szJamoKeys[nIndex];
    return key == ' ' ? 0 : key;
}

int CAccelerators::CommandOfKey(const QKeyEvent& event)
{
    if (const int nId = CommandOf(event.modifiers(), event.key()))
        return nId;
    // A Latin layout means the letters it prints, wherever they lie.
    if (event.key() > 0 && event.key() < 0x80)
        return 0;
    int nKey = event.text().size() == 1 ? KeyOfJamo(event.text().front()) : 0;
    if (!nKey && event.key() > 0x3130 && event.key() < 0x3164)
        nKey = KeyOfJamo(QChar(event.key()));
    if (!nKey && event.key() < 0x01000000) // a character, not a key such as F5
        nKey = KeyOfPosition(event.nativeScanCode());
    return nKey ? CommandOf(event.modifiers(), nKey) : 0;
}

CAccelerators::CAccelerators(QWidget* pFrame, Execute execute)
    : QObject(pFrame)
    , m_pFrame(pFrame)
    , m_execute(std::move(execute))
{
    qApp->installEventFilter(this);
}

bool CAccelerators::IsOurs(const QWidget* pWidget) const
{
    // Not isAncestorOf(): a floating box is a window of its own, below the frame.
    for (; pWidget; pWidget = pWidget->parentWidget())
        if (pWidget == m_pFrame)
            return true;
    return false;
}

bool CAccelerators::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const QEvent::Type type = pEvent->type();
    if (type != QEvent::KeyPress && type != QEvent::ShortcutOverride && type != QEvent::InputMethod)
        return false;
    if (!pWatched->isWidgetType() || QApplication::activePopupWidget() || QApplication::activeModalWidget())
        return false;
    const auto* pWidget = static_cast<QWidget*>(pWatched);
    if (!IsOurs(pWidget))
        return false;
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        if (type != QEvent::ShortcutOverride)
            return false;
        pEvent->accept(); // a stroke is under way: the key is the tool's, and drops no menu over it
        return true;
    }

    if (type == QEvent::InputMethod) {
        const auto* pInput = static_cast<QInputMethodEvent*>(pEvent);
        if (TakesText(pWidget) || pInput->commitString().size() != 1)
            return false;
        const int nKey = KeyOfJamo(pInput->commitString().front());
        const int nId = nKey ? CommandOf(Qt::NoModifier, nKey) : 0;
        if (nId)
            m_execute(nId);
        return nId != 0;
    }

    auto* pKey = static_cast<QKeyEvent*>(pEvent);
    if (TakesText(pWidget) && IsTextKey(*pKey))
        return false;
    const int nId = CommandOfKey(*pKey);
    if (!nId)
        return false;
    pEvent->accept(); // as an override: the press then comes here, and to no other shortcut
    if (type == QEvent::KeyPress)
        m_execute(nId); // a grey command eats its key too
    return true;
}

} // namespace kestrune

#include "script/ScriptDialogs.h"

#include "ui/Dialog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimer>

namespace kestrune {

CScriptDialogs::CScriptDialogs()
{
    CPaintDialog::SetDriver([this](CPaintDialog& dialog) { return Drive(dialog); });
    QCoreApplication::instance()->installEventFilter(this);
}

CScriptDialogs::~CScriptDialogs()
{
    CPaintDialog::SetDriver({});
}

void CScriptDialogs::Begin(std::optional<DialogPlan> plan)
{
    m_plan = std::move(plan);
    m_nDialogs = 0;
    m_bAccepted = false;
    m_strFailure.clear();
}

std::optional<QString> CScriptDialogs::End()
{
    if (m_plan && m_nDialogs == 0 && !m_plan->keys.isEmpty())
        Fail(QStringLiteral("no dialog took the key \"%1\"").arg(m_plan->keys.first().first));
    if (m_plan && m_nDialogs == 0 && m_plan->bCancel)
        Fail(QStringLiteral("there was no dialog to cancel"));
    m_plan.reset();
    return m_strFailure.isEmpty() ? std::optional<QString>() : m_strFailure;
}

void CScriptDialogs::Fail(const QString& strReason)
{
    if (m_strFailure.isEmpty())
        m_strFailure = strReason;
}

int CScriptDialogs::Drive(CPaintDialog& dialog)
{
    m_nDialogs++;
    if (!m_plan) {
        Fail(QStringLiteral("the dialog \"%1\" appeared, for which the statement has no values").arg(dialog.windowTitle()));
        return QDialog::Rejected;
    }
    if (m_nDialogs == 1) { // the values are for the first; one that follows it is closed with OK as it stands
        for (const auto& [strKey, strValue] : std::as_const(m_plan->keys)) {
            if (const std::optional<QString> error = dialog.SetKey(strKey, strValue)) {
                Fail(strKey + QStringLiteral(": ") + *error);
                dialog.reject();
                return QDialog::Rejected;
            }
        }
        if (m_plan->bCancel) {
            dialog.reject();
            return QDialog::Rejected;
        }
    }
    dialog.accept();
    if (dialog.result() != QDialog::Accepted) {
        Fail(QStringLiteral("the dialog \"%1\" did not take its values").arg(dialog.windowTitle()));
        dialog.reject();
    }
    m_bAccepted = m_bAccepted || dialog.result() == QDialog::Accepted;
    return dialog.result();
}

bool CScriptDialogs::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Show) {
        auto* pDialog = qobject_cast<QDialog*>(pObject);
        if (pDialog && pDialog->isWindow() && pDialog->isModal()) {
            Fail(QStringLiteral("a box appeared that a script cannot answer: \"%1\"").arg(pDialog->windowTitle()));
            QTimer::singleShot(0, pDialog, &QDialog::reject);
        }
    }
    return QObject::eventFilter(pObject, pEvent);
}

} // namespace kestrune

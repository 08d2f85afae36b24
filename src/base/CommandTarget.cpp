#include "base/CommandTarget.h"

#include <utility>

namespace kestrune {

void CCommandTarget::OnCommandId(int nId, Handler handler, Update update)
{
    m_mapHandlers[nId] = {std::move(handler), std::move(update)};
}

bool CCommandTarget::RunCommand(int nId)
{
    const auto it = m_mapHandlers.find(nId);
    if (it == m_mapHandlers.end())
        return false;
    const Handler handler = it->second.handler; // the handler may close this target
    handler();
    return true;
}

bool CCommandTarget::UpdateCommand(int nId, CommandState& state) const
{
    const auto it = m_mapHandlers.find(nId);
    if (it == m_mapHandlers.end())
        return false;
    if (it->second.update)
        it->second.update(state);
    return true;
}

} // namespace kestrune

#pragma once

#include <functional>
#include <map>
#include <string>

namespace kestrune {

/// What an update handler says of a command: menus, toolbars and scripts show it.
struct CommandState {
    bool bEnabled = true;
    bool bChecked = false;
    std::string strText; ///< replaces the menu text when not empty
};

/// One member of the command route (view, document, child frame, main frame, application): a table from command id
/// to handler. A command whose id no member of the route handles is grey.
class CCommandTarget {
public:
    using Handler = std::function<void()>;
    using Update = std::function<void(CommandState&)>;

    virtual ~CCommandTarget() = default;

    /// Adds or replaces the handler of an id; without an update handler the command is enabled and unchecked.
    void OnCommandId(int nId, Handler handler, Update update = {});

    /// True when this member handles the id.
    bool Handles(int nId) const { return m_mapHandlers.contains(nId); }
    /// Runs the handler; false when there is none.
    bool RunCommand(int nId);
    /// Fills in the state; false when this member does not handle the id.
    bool UpdateCommand(int nId, CommandState& state) const;

private:
    struct Entry {
        Handler handler;
        Update update;
    };
    std::map<int, Entry> m_mapHandlers;
};

} // namespace kestrune

#pragma once

#include "tools/PaintTool.h"

#include <list>

namespace kestrune {

/// Id of the current tool; the view looks the tool up with it on every event.
extern int g_nCurrentTool;
/// Command id of the tool button shown as pressed. The Space key changes it and does not put it back.
extern int g_nCurrentToolCommand;

/// All tools, in order of construction; built before the program starts, complete until it ends.
const std::list<CPaintTool*>& ToolRegistry();
/// The first tool of that id; null for an unknown one.
CPaintTool* FindTool(int nToolId);

/// Leaves the current tool, stores the two numbers, enters the new tool, in this order.
void SwitchTool(int nToolId, int nCommand);

/// For the tools' own constructor and destructor.
void AppendTool(CPaintTool* pTool);
void RemoveTool(CPaintTool* pTool);

} // namespace kestrune

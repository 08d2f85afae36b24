#include "tools/ToolRegistry.h"

#include "tools/AirBrushTool.h"
#include "tools/BlurTool.h"
#include "tools/BrushTool.h"
#include "tools/BurnTool.h"
#include "tools/CropTool.h"
#include "tools/CursorTool.h"
#include "tools/DodgeTool.h"
#include "tools/EllipseSelectTool.h"
#include "tools/EraserTool.h"
#include "tools/FreeTransformTool.h"
#include "tools/HandTool.h"
#include "tools/MagicWandTool.h"
#include "tools/MoveTool.h"
#include "tools/PencilTool.h"
#include "tools/PolygonSelectTool.h"
#include "tools/RotateTool.h"
#include "tools/ScaleTool.h"
#include "tools/SharpenTool.h"
#include "tools/SkewHorzTool.h"
#include "tools/SkewVertTool.h"
#include "tools/SmudgeTool.h"
#include "tools/StampTool.h"
#include "tools/ToolTable.h"
#include "tools/ZoomTool.h"

#include <algorithm>

namespace kestrune {

int g_nCurrentTool = TOOL_RECT_SELECT;
int g_nCurrentToolCommand = 1001;

namespace {

std::list<CPaintTool*>& List()
{
    static std::list<CPaintTool*> s_list; // in a function: tools of other sources may be built before this one's statics
    return s_list;
}

/// The one object of each tool; the order of the members is the order of the registry. A tool without a class of its own
/// yet is the base class, which takes the mouse and does nothing.
struct AllTools {
    CRectSelectTool rectSelect{TOOL_RECT_SELECT};
    CEllipseSelectTool ellipseSelect{TOOL_ELLIPSE_SELECT};
    CFreeSelectTool freeSelect{TOOL_FREE_SELECT};
    CPolygonSelectTool polygonSelect{TOOL_POLYGON_SELECT};
    CMoveTool move{TOOL_MOVE};
    CMagicWandTool magicWand{TOOL_MAGIC_WAND};
    CCropTool crop{TOOL_CROP};
    CPencilTool pencil{TOOL_PENCIL};
    CBrushTool brush{TOOL_BRUSH};
    CEraserTool eraser{TOOL_ERASER};
    CAirBrushTool airBrush{TOOL_AIR_BRUSH};
    CStampTool stamp{TOOL_STAMP};
    CCursorTool photoBrush{TOOL_PHOTO_BRUSH};
    CCursorTool colorEffect{TOOL_COLOR_EFFECT};
    CCursorTool textureEffect{TOOL_TEXTURE_EFFECT};
    CBlurTool blur{TOOL_BLUR};
    CSharpenTool sharpen{TOOL_SHARPEN};
    CDodgeTool dodge{TOOL_DODGE};
    CBurnTool burn{TOOL_BURN};
    CSmudgeTool smudge{TOOL_SMUDGE};
    CCursorTool gradient{TOOL_GRADIENT};
    CCursorTool bucket{TOOL_BUCKET};
    CScaleTool scale{TOOL_SCALE};
    CRotateTool rotate{TOOL_ROTATE};
    CSkewHorzTool skewHorz{TOOL_SKEW_HORZ};
    CSkewVertTool skewVert{TOOL_SKEW_VERT};
    CFreeTransformTool freeTransform{TOOL_FREE_TRANSFORM};
    CCursorTool eyedropper{TOOL_EYEDROPPER};
    CCursorTool text{TOOL_TEXT};
    CZoomTool zoom{TOOL_ZOOM};
    CHandTool hand{TOOL_HAND};
} s_tools;

} // namespace

const std::list<CPaintTool*>& ToolRegistry()
{
    return List();
}

CPaintTool* FindTool(int nToolId)
{
    const auto it = std::find_if(List().begin(), List().end(), [&](CPaintTool* p) { return p->GetId() == nToolId; });
    return it == List().end() ? nullptr : *it;
}

void SwitchTool(int nToolId, int nCommand)
{
    if (CPaintTool* pTool = FindTool(g_nCurrentTool))
        pTool->OnDeactivate();
    g_nCurrentTool = nToolId;
    g_nCurrentToolCommand = nCommand;
    if (CPaintTool* pTool = FindTool(nToolId))
        pTool->OnActivate();
    if (g_pActiveToolView) // a shortcut changes the tool while the pointer rests on the picture
        g_pActiveToolView->RefreshCursor();
}

void AppendTool(CPaintTool* pTool)
{
    List().push_back(pTool);
}

void RemoveTool(CPaintTool* pTool)
{
    List().remove(pTool);
}

} // namespace kestrune

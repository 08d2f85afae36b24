#include "resources/PaintSources.h"

namespace kestrune {

ActiveBrush g_activeBrush;
PaintPattern g_paintPattern;
BrushTexture g_brushTexture;

} // namespace kestrune

#include "tools/BurnTool.h"

#include "paint/BurnCore.h"

namespace kestrune {

std::unique_ptr<PaintCore> CBurnTool::MakeCore(CPaintImage& image) const
{
    return std::make_unique<BurnCore>(image, Settings());
}

} // namespace kestrune

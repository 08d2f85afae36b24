#pragma once

#include "tools/StrokeTool.h"

namespace kestrune {

/// The pencil tool: draws with the foreground colour.
class CPencilTool : public CStrokeTool {
public:
    using CStrokeTool::CStrokeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
    bool LaysHardMask() const override;
};

} // namespace kestrune

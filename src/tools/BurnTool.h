#pragma once

#include "tools/DodgeTool.h"

namespace kestrune {

/// The burn tool: makes darker what it passes, with the settings of dodge.
class CBurnTool : public CDodgeTool {
public:
    using CDodgeTool::CDodgeTool;

protected:
    std::unique_ptr<PaintCore> MakeCore(CPaintImage& image) const override;
};

} // namespace kestrune

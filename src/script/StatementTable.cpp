#include "script/ScriptContext.h"

#include <string_view>

namespace kestrune {

namespace {

// A row without a handler is a statement whose tool, dialog or command the program does not have yet.
constexpr StatementRow c_aStatements[] = {
    {"new", 2, 4, statements::New},
    {"open", 1, 1, statements::Open},
    {"save", 0, 0, statements::Save},
    {"saveas", 1, 1, statements::SaveAs},
    {"close", 0, 0, statements::Close},
    {"activate", 1, 1, statements::Activate},
    {"command", 1, -1, statements::Command},
    {"option", 3, 3, statements::Option},
    {"foreground", 3, 3, statements::Foreground},
    {"background", 3, 3, statements::Background},
    {"brush", 1, 1, statements::Brush},
    {"brushfile", 1, 1, statements::BrushFile},
    {"brushnew", 4, 4, statements::BrushNew},
    {"softedge", 1, 1, statements::SoftEdge},
    {"response", 2, -1, statements::Response},
    {"pattern", 1, 2, statements::Pattern},
    {"texture", 1, 1, statements::Texture},
    {"photobrush", 1, 2, nullptr},
    {"gradientfile", 1, 1, nullptr},
    {"press", 2, 5, statements::Press},
    {"move", 2, 4, statements::Move},
    {"release", 2, 2, statements::Release},
    {"doubleclick", 2, 2, statements::DoubleClick},
    {"keydown", 1, 1, statements::KeyDown},
    {"keyup", 1, 1, statements::KeyUp},
    {"wait", 1, 1, statements::Wait},
    {"text", 1, 7, nullptr},
    {"zoom", 1, 1, statements::Zoom},
    {"undo", 0, 0, statements::Undo},
    {"redo", 0, 0, statements::Redo},
    {"history", 1, 1, statements::History},
    {"copy", 0, 0, statements::Copy},
    {"cut", 0, 0, statements::Cut},
    {"paste", 0, 0, statements::Paste},
    {"answer", 1, 1, statements::Answer},
    {"dump", 2, 2, statements::Dump},
    {"print", 1, 3, statements::Print},
    {"screenshot", 1, 2, statements::Screenshot},
    {"quit", 0, 0, statements::Quit},
};

constexpr bool IsSane()
{
    for (const StatementRow& row : c_aStatements) {
        if (row.nMinWords < 0 || (row.nMaxWords >= 0 && row.nMaxWords < row.nMinWords))
            return false;
        for (const StatementRow& other : c_aStatements)
            if (&row != &other && std::string_view(row.strName) == other.strName)
                return false;
    }
    return true;
}
static_assert(IsSane(), "a statement stands twice, or its word counts are crossed");

} // namespace

std::span<const StatementRow> Statements()
{
    return c_aStatements;
}

} // namespace kestrune

// Writes the brush files that ship. Every shape is worked out here: round and elliptical ones by the program's own generator, the
// others from outlines, hairs, drops and grain, with a random source of their own, so that each run gives the same bytes.
//   g++ -std=c++20 -O2 -ffp-contract=off -Isrc -Iassets/brushes assets/brushes/*.cpp src/base/{Files,Log,StringTable}.cpp
//     src/resources/Brush{File,Generator}.cpp -o make-brushes
//   ./make-brushes install/Brushes              # the files
//   ./make-brushes install/Brushes sheet.pgm    # and a contact sheet to look at
#include "Media.h"

#include "resources/BrushFile.h"
#include "resources/BrushGenerator.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

using namespace kestrune;

namespace {

using Brushes = std::vector<BrushEntry>;

BrushEntry Spaced(BrushEntry entry, int nSpacing)
{
    entry.m_nSpacing = nSpacing;
    return entry;
}

BrushEntry Dot(int nSpacing)
{
    BrushEntry entry;
    entry.m_nSpacing = nSpacing;
    entry.m_nWidth = entry.m_nHeight = 1;
    entry.m_pMask = {255};
    return entry;
}

/// The fourth brush is the one that the program begins with: a crisp round tip, wide enough to see and small enough to draw.
Brushes Round()
{
    Brushes brushes{Dot(25)};
    // Radius and hardness; the spacing follows from both: a soft edge hides the steps between dabs, a hard one shows them.
    constexpr struct {
        double dRadius;
        int nHardness;
    } aRows[] = {
        {1, 100}, {2, 100}, {6, 90}, {9, 90}, {14, 92}, {20, 94}, {30, 95}, {50, 96}, {75, 97}, {100, 98}, // hard
        {3, 50},  {6, 50},  {10, 50}, {16, 50}, {24, 50}, {40, 50}, {65, 50}, {100, 50},                    // between
        {4, 0},   {8, 0},   {13, 0},  {20, 0},  {32, 0},  {50, 0},  {75, 0},  {100, 0},                      // soft
    };
    for (const auto& row : aRows)
        brushes.push_back(Spaced(GenerateBrush({row.dRadius, row.nHardness, 0, 1}), row.dRadius < 3 ? 25 : row.nHardness > 80 ? 10 : row.nHardness ? 15 : 20));
    return brushes;
}

Brushes Nibs()
{
    Brushes brushes;
    for (const int nAngle : {45, 135, 0, 90}) {
        for (const double dRadius : {5.0, 9.0, 15.0, 24.0})
            brushes.push_back(Spaced(GenerateBrush({dRadius, 92, nAngle, 4}), 5));
        brushes.push_back(Spaced(GenerateBrush({40.0, 95, nAngle, 9}), 3));
    }
    for (const double dRadius : {12.0, 24.0, 45.0})
        brushes.push_back(Spaced(GenerateBrush({dRadius, 40, 30, 2}), 10));
    for (const int nSide : {15, 27, 45})
        for (const double dAngle : {30.0, 60.0, 90.0})
            brushes.push_back(Spaced(FlatNib(nSide, dAngle), 4));
    return brushes;
}

Brushes Natural()
{
    Brushes brushes;
    for (const int nSide : {13, 25, 41, 67}) {
        brushes.push_back(Spaced(Chalk(nSide), 20));
        brushes.push_back(Spaced(Charcoal(nSide + 6), 15));
        brushes.push_back(Spaced(Bristles(nSide), 4));
        brushes.push_back(Spaced(DryBrush(nSide + 10), 4));
        brushes.push_back(Spaced(Pastel(nSide + 4), 15));
    }
    for (const int nSide : {45, 71, 111}) {
        brushes.push_back(Spaced(Sponge(nSide), 35));
        brushes.push_back(Spaced(Spray(nSide), 30));
        brushes.push_back(Spaced(Splatter(nSide), 110));
        brushes.push_back(Spaced(Cloud(nSide), 40));
    }
    return brushes;
}

Brushes Scattered()
{
    Brushes brushes;
    for (const int nSide : {29, 47, 75}) {
        brushes.push_back(Spaced(Leaf(nSide, 40), 120));
        brushes.push_back(Spaced(Leaf(nSide, 125), 120));
        brushes.push_back(Spaced(MapleLeaf(nSide), 130));
        brushes.push_back(Spaced(Sprig(nSide + 14), 110));
        brushes.push_back(Spaced(Petal(nSide - 8, 35), 140));
        brushes.push_back(Spaced(Blossom(nSide), 130));
        brushes.push_back(Spaced(Grass(nSide), 45));
        brushes.push_back(Spaced(Snow(nSide), 140));
    }
    return brushes;
}

/// All brushes of a file in rows, each at its size, black on white.
void AddToSheet(std::vector<std::string>& rows, const Brushes& brushes)
{
    constexpr int c_nWidth = 1200, c_nGap = 6;
    int x = c_nGap, nTop = static_cast<int>(rows.size()) + c_nGap, nBottom = nTop;
    for (const BrushEntry& brush : brushes) {
        if (x + brush.m_nWidth > c_nWidth) {
            x = c_nGap;
            nTop = nBottom + c_nGap;
        }
        nBottom = std::max(nBottom, nTop + brush.m_nHeight);
        rows.resize(static_cast<std::size_t>(nBottom + c_nGap), std::string(c_nWidth, '\xff'));
        for (int dy = 0; dy < brush.m_nHeight; dy++)
            for (int dx = 0; dx < brush.m_nWidth; dx++)
                rows[static_cast<std::size_t>(nTop + dy)][static_cast<std::size_t>(x + dx)]
                    = static_cast<char>(255 - brush.m_pMask[static_cast<std::size_t>(dy * brush.m_nWidth + dx)]);
        x += brush.m_nWidth + c_nGap;
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2 && argc != 3) {
        std::fprintf(stderr, "usage: make-brushes FOLDER [SHEET.pgm]\n");
        return 2;
    }
    // In the order in which the program lists them, which is that of their names.
    const std::pair<const char*, Brushes> aFiles[] = {
        {"기본 둥근 브러시.pbr", Round()}, {"납작한 붓과 펜촉.pbr", Nibs()}, {"잎과 꽃.pbr", Scattered()}, {"자연 재료.pbr", Natural()}};
    std::vector<std::string> sheet;
    for (const auto& [pszName, brushes] : aFiles) {
        if (!WriteBrushFile(std::filesystem::path(argv[1]) / pszName, brushes))
            return 1;
        AddToSheet(sheet, brushes);
    }
    if (argc == 3) {
        std::ofstream file(argv[2], std::ios::binary);
        file << "P5\n" << sheet.front().size() << ' ' << sheet.size() << "\n255\n";
        for (const std::string& strRow : sheet)
            file << strRow;
        return file.good() ? 0 : 1;
    }
    return 0;
}

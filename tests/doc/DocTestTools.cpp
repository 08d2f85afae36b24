#include "DocTestTools.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace kestrune::test {

LBitmapBase RandomBitmap(int nWidth, int nHeight, int nBits, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    LBitmapBase bitmap;
    bitmap.Create(nWidth, nHeight, nBits);
    for (int y = 0; y < nHeight; y++)
        for (std::size_t i = 0; i < bitmap.GetRowBytes(); i++)
            bitmap.WriteRow(y)[i] = static_cast<std::uint8_t>(random() & (nBits >= 8 ? 255u : (1u << nBits) - 1));
    return bitmap;
}

LBitmapBase PhotoLike(int nWidth, int nHeight, unsigned nSeed)
{
    std::mt19937 random(nSeed);
    LBitmapBase bitmap;
    bitmap.Create(nWidth, nHeight, 24);
    for (int y = 0; y < nHeight; y++) {
        std::uint8_t* p = bitmap.WriteRow(y);
        for (int x = 0; x < nWidth; x++, p += 3) {
            const double u = double(x) / nWidth, v = double(y) / nHeight;
            const bool bDisc = (u - 0.4) * (u - 0.4) + (v - 0.5) * (v - 0.5) < 0.06;
            const double level[3] = {90 + 120 * u, 60 + 150 * v * (1 - u), bDisc ? 220 - 60 * v : 80 + 70 * std::sin(9 * u + 4 * v)};
            for (int c = 0; c < 3; c++)
                p[c] = static_cast<std::uint8_t>(std::clamp(level[c] + double(random() % 13) - 6, 0.0, 255.0));
        }
    }
    return bitmap;
}

std::vector<std::uint8_t> BytesOf(const LBitmapBase& bitmap)
{
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < bitmap.GetHeight(); y++)
        bytes.insert(bytes.end(), bitmap.Row(y), bitmap.Row(y) + bitmap.GetRowBytes());
    return bytes;
}

CTempFolder::CTempFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "kestrune-doc-XXXXXX").string();
    m_path = mkdtemp(name.data());
}

CTempFolder::~CTempFolder()
{
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
}

void WriteText(const std::filesystem::path& path, const std::string& strText)
{
    std::ofstream(path, std::ios::binary) << strText;
}

std::string ReadText(const std::filesystem::path& path)
{
    std::stringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

} // namespace kestrune::test

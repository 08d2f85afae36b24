#include "ForeignTools.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

namespace fs = std::filesystem;

namespace kestrune::tests {

CTestFolder::CTestFolder()
{
    std::string strPattern = (fs::temp_directory_path() / "kestrune-test-XXXXXX").string();
    m_path = ::mkdtemp(strPattern.data());
}

CTestFolder::~CTestFolder()
{
    std::error_code error;
    fs::remove_all(m_path, error);
}

testing::AssertionResult CTestFolder::Run(const std::string& strCommand) const
{
    const fs::path log = m_path / "command.log";
    std::ofstream(m_path / "command.sh") << "set -eo pipefail\n" << strCommand << "\n";
    const std::string strLine = "cd '" + m_path.string() + "' && bash command.sh > command.log 2>&1";
    if (std::system(strLine.c_str()) == 0)
        return testing::AssertionSuccess();
    std::ifstream in(log);
    return testing::AssertionFailure() << strCommand << "\n" << std::string(std::istreambuf_iterator<char>(in), {});
}

Rgb24 MakeTestPicture(int nWidth, int nHeight)
{
    Rgb24 picture{nWidth, nHeight, {}};
    unsigned nState = 7;
    for (int y = 0; y < nHeight; y++)
        for (int x = 0; x < nWidth; x++) {
            nState = nState * 214013 + 2531011;
            const int nNoise = static_cast<int>(nState >> 28) - 8;
            int aColor[3] = {x * 220 / nWidth + 16, y * 220 / nHeight + 16, (x + y) * 200 / (nWidth + nHeight) + 30};
            const double fRadius = std::hypot(x - nWidth / 3.0, y - nHeight / 2.0);
            if (fRadius < nHeight / 4.0)
                aColor[0] = 230, aColor[1] = 40, aColor[2] = 30;
            if (x > nWidth * 2 / 3 && y < nHeight / 3)
                aColor[0] = 20, aColor[1] = 60, aColor[2] = 200;
            for (const int n : aColor)
                picture.bytes.push_back(static_cast<std::uint8_t>(std::clamp(n + nNoise, 0, 255)));
        }
    return picture;
}

namespace {

int NextNumber(const Bytes& bytes, std::size_t& n)
{
    for (;;) {
        while (n < bytes.size() && std::isspace(bytes[n]))
            n++;
        if (n >= bytes.size() || bytes[n] != '#')
            break;
        while (n < bytes.size() && bytes[n] != '\n')
            n++;
    }
    int nValue = 0;
    while (n < bytes.size() && std::isdigit(bytes[n]))
        nValue = nValue * 10 + bytes[n++] - '0';
    return nValue;
}

} // namespace

Rgb24 ReadPnm(const fs::path& path)
{
    const Bytes bytes = ReadBytes(path);
    if (bytes.size() < 8 || bytes[0] != 'P' || bytes[1] < '4' || bytes[1] > '6')
        return {};
    std::size_t n = 2;
    Rgb24 picture;
    picture.nWidth = NextNumber(bytes, n);
    picture.nHeight = NextNumber(bytes, n);
    const int nMost = bytes[1] == '4' ? 1 : NextNumber(bytes, n);
    n++;
    const std::size_t nRow = bytes[1] == '4' ? (static_cast<std::size_t>(picture.nWidth) + 7) / 8
                                             : static_cast<std::size_t>(picture.nWidth) * (bytes[1] == '6' ? 3 : 1);
    if (nMost > 255 || n + nRow * static_cast<std::size_t>(picture.nHeight) > bytes.size())
        return {};
    for (int y = 0; y < picture.nHeight; y++)
        for (int x = 0; x < picture.nWidth; x++)
            for (int c = 0; c < 3; c++) {
                const std::uint8_t* p = bytes.data() + n + nRow * static_cast<std::size_t>(y);
                const int v = bytes[1] == '4' ? 1 - ((p[x / 8] >> (7 - x % 8)) & 1) : bytes[1] == '5' ? p[x] : p[x * 3 + c];
                picture.bytes.push_back(static_cast<std::uint8_t>((v * 255 + nMost / 2) / nMost));
            }
    return picture;
}

void WritePpm(const Rgb24& picture, const fs::path& path)
{
    std::ofstream out(path, std::ios::binary);
    out << "P6\n" << picture.nWidth << " " << picture.nHeight << "\n255\n";
    out.write(reinterpret_cast<const char*>(picture.bytes.data()), static_cast<std::streamsize>(picture.bytes.size()));
}

Rgb24 ColorsOf(const LBitmapBase& bitmap)
{
    Rgb24 picture{bitmap.GetWidth(), bitmap.GetHeight(), {}};
    for (int y = 0; y < bitmap.GetHeight(); y++)
        for (int x = 0; x < bitmap.GetWidth(); x++) {
            const COLORREF cr = bitmap.GetPixelColor(x, y);
            for (const std::uint8_t n : {RedOf(cr), GreenOf(cr), BlueOf(cr)})
                picture.bytes.push_back(n);
        }
    return picture;
}

LBitmapBase BitmapOf(const Rgb24& picture)
{
    LBitmapBase bitmap;
    bitmap.Create(picture.nWidth, picture.nHeight, 24);
    for (int y = 0; y < picture.nHeight; y++)
        for (int x = 0; x < picture.nWidth; x++)
            for (int c = 0; c < 3; c++)
                bitmap.WriteRow(y)[x * 3 + c] = picture.bytes[static_cast<std::size_t>((y * picture.nWidth + x) * 3 + 2 - c)];
    return bitmap;
}

double MeanDifference(const Rgb24& a, const Rgb24& b)
{
    if (a.nWidth != b.nWidth || a.nHeight != b.nHeight || a.bytes.empty())
        return 1000;
    double fSum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); i++)
        fSum += std::abs(a.bytes[i] - b.bytes[i]);
    return fSum / static_cast<double>(a.bytes.size());
}

Bytes ReadBytes(const fs::path& path)
{
    return ReadWholeFile(path, 1u << 30).value_or(Bytes());
}

} // namespace kestrune::tests

#pragma once

#include "base/Messages.h"
#include "doc/Bitmap.h"

#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace kestrune::test {

/// A picture of random pixels; depth 8 or less has random indices.
LBitmapBase RandomBitmap(int nWidth, int nHeight, int nBits, unsigned nSeed);
/// A picture with soft areas, edges and some noise, as a photograph has them.
LBitmapBase PhotoLike(int nWidth, int nHeight, unsigned nSeed);

/// All rows, one after the other.
std::vector<std::uint8_t> BytesOf(const LBitmapBase& bitmap);

/// Takes the place of the message sink and keeps what was said.
class CSaid final : public CMessageSink {
public:
    CSaid() { SetMessageSink(this); }
    ~CSaid() override { SetMessageSink(nullptr); }
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        messages.push_back(strText);
        return nDefault;
    }
    void StatusText(const std::string& strText) override { lines.push_back(strText); }

    std::vector<std::string> messages;
    std::vector<std::string> lines;
};

/// An empty folder that goes away with all it holds.
class CTempFolder {
public:
    CTempFolder();
    ~CTempFolder();
    std::filesystem::path operator/(const std::string& strName) const { return m_path / strName; }
    const std::filesystem::path& Path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

void WriteText(const std::filesystem::path& path, const std::string& strText);
std::string ReadText(const std::filesystem::path& path);

} // namespace kestrune::test

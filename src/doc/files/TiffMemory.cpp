#include "doc/files/TiffMemory.h"

#include "base/Log.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace kestrune {

namespace {

/// Directories may be linked in a ring or hold thousands of complaints; the first few say enough.
constexpr int c_nMostLines = 8;
thread_local int t_nLines = 0;

int OnMessage(TIFF*, void*, const char* pszModule, const char* pszFormat, va_list args)
{
    if (t_nLines++ < c_nMostLines) {
        char szText[512];
        std::vsnprintf(szText, sizeof szText, pszFormat, args);
        LogWarning(std::string("TIFF: ") + (pszModule ? pszModule : "") + ": " + szText);
    }
    return 1; // said; the library's own output stays silent
}

} // namespace

CTiffMemory::CTiffMemory(std::span<const std::uint8_t> file, std::uint64_t nMostBytes)
    : m_file(file)
{
    Open("rm", nMostBytes);
}

CTiffMemory::CTiffMemory(std::vector<std::uint8_t>& out)
    : m_pOut(&out)
{
    Open("wm", 0);
}

void CTiffMemory::Open(const char* pszMode, std::uint64_t nMostBytes)
{
    t_nLines = 0;
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(TIFFOpenOptionsAlloc(), &TIFFOpenOptionsFree);
    if (!options)
        throw std::bad_alloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), OnMessage, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), OnMessage, nullptr);
    if (nMostBytes > 0)
        TIFFOpenOptionsSetMaxSingleMemAlloc(options.get(), static_cast<tmsize_t>(nMostBytes));
    m_pTiff = TIFFClientOpenExt("picture", pszMode, this, OnRead, OnWrite, OnSeek, [](thandle_t) { return 0; }, OnSize, OnMap,
                                [](thandle_t, void*, toff_t) {}, options.get());
}

bool CTiffMemory::Close()
{
    if (m_pTiff)
        TIFFClose(m_pTiff);
    m_pTiff = nullptr;
    return !m_bFailed;
}

tmsize_t CTiffMemory::OnRead(thandle_t hSelf, void* pTo, tmsize_t nBytes)
{
    auto& self = *static_cast<CTiffMemory*>(hSelf);
    const std::span<const std::uint8_t> file = self.m_pOut ? std::span<const std::uint8_t>(*self.m_pOut) : self.m_file;
    if (self.m_nPos >= file.size() || nBytes <= 0)
        return 0;
    const std::size_t n = std::min<std::size_t>(static_cast<std::size_t>(nBytes), file.size() - self.m_nPos);
    std::memcpy(pTo, file.data() + self.m_nPos, n);
    self.m_nPos += n;
    return static_cast<tmsize_t>(n);
}

tmsize_t CTiffMemory::OnWrite(thandle_t hSelf, void* pFrom, tmsize_t nBytes)
{
    auto& self = *static_cast<CTiffMemory*>(hSelf);
    if (!self.m_pOut || nBytes <= 0)
        return 0;
    const std::uint64_t nEnd = self.m_nPos + static_cast<std::uint64_t>(nBytes);
    try {
        if (self.m_pOut->size() < nEnd)
            self.m_pOut->resize(static_cast<std::size_t>(nEnd));
    } catch (const std::bad_alloc&) {
        self.m_bFailed = true;
        return 0;
    }
    std::memcpy(self.m_pOut->data() + self.m_nPos, pFrom, static_cast<std::size_t>(nBytes));
    self.m_nPos = nEnd;
    return nBytes;
}

toff_t CTiffMemory::OnSeek(thandle_t hSelf, toff_t nTo, int nWhence)
{
    auto& self = *static_cast<CTiffMemory*>(hSelf);
    const toff_t nBase = nWhence == SEEK_CUR ? self.m_nPos : nWhence == SEEK_END ? OnSize(hSelf) : 0;
    self.m_nPos = nBase + nTo;
    return self.m_nPos;
}

toff_t CTiffMemory::OnSize(thandle_t hSelf)
{
    const auto& self = *static_cast<CTiffMemory*>(hSelf);
    return self.m_pOut ? self.m_pOut->size() : self.m_file.size();
}

int CTiffMemory::OnMap(thandle_t, void**, toff_t*)
{
    return 0; // reading by calls keeps every access checked
}

} // namespace kestrune

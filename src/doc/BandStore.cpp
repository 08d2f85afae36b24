#include "doc/BandStore.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace kestrune {

namespace {
// Small enough that a dab on a large picture copies little, large enough that sharing a hundred megapixels is cheap.
constexpr std::size_t c_nBandBytes = 256 * 1024;
} // namespace

CBandStore::CBandStore(int nRows, std::size_t nRowBytes)
    : m_nRows(nRows)
    , m_nRowBytes(nRowBytes)
{
    while (m_nBandRows * 2 * nRowBytes <= c_nBandBytes && m_nBandRows < nRows) {
        m_nBandRows *= 2;
        m_nBandShift++;
    }
    const std::size_t nBands = (static_cast<std::size_t>(nRows) + m_nBandRows - 1) >> m_nBandShift;
    m_bands.resize(nBands);
    for (std::size_t i = 0; i < nBands; i++) {
        m_bands[i] = std::make_shared<BandData>();
        m_bands[i]->data.reset(new std::uint8_t[RowsInBand(i) * nRowBytes]);
    }
}

int CBandStore::RowsInBand(std::size_t iBand) const
{
    return std::min(m_nBandRows, m_nRows - static_cast<int>(iBand << m_nBandShift));
}

std::uint8_t* CBandStore::WriteRow(int y)
{
    Detach(y, y + 1);
    return m_bands[Band(y)]->data.get() + Offset(y);
}

void CBandStore::Detach(int y0, int y1)
{
    if (y1 <= y0)
        return;
    for (std::size_t i = Band(y0); i <= Band(y1 - 1); i++) {
        if (m_bands[i].use_count() == 1)
            continue;
        const std::size_t nBytes = RowsInBand(i) * m_nRowBytes;
        auto own = std::make_shared<BandData>();
        own->data.reset(new std::uint8_t[nBytes]);
        std::memcpy(own->data.get(), m_bands[i]->data.get(), nBytes);
        m_bands[i] = std::move(own);
    }
}

std::size_t CBandStore::PrivateBytes() const
{
    std::size_t nBytes = 0;
    for (std::size_t i = 0; i < m_bands.size(); i++)
        if (m_bands[i].use_count() == 1)
            nBytes += RowsInBand(i) * m_nRowBytes;
    return nBytes;
}

} // namespace kestrune

#include "base/StringTable.h"

#include <algorithm>
#include <iterator>

namespace kestrune {

namespace {

struct StringRow {
    int nId;
    std::string_view text;
};

// Ascending by number.
constexpr StringRow c_aStrings[] = {
    {IDS_OLE_INIT_FAILED, "프로그램을 시작하지 못했습니다. 시스템 초기화에 실패하였습니다."},
    {IDS_PRODUCT_NAME, "케스트룬"},
    {IDS_BAD_FORMAT, "올바른 파일 형식이 아닙니다."},
    {IDS_LOAD_ERROR, "이미지를 로딩하는 도중 오류가 발생하였습니다.! -> 오류 코드:"},
};

constexpr bool IsAscending()
{
    for (std::size_t i = 1; i < std::size(c_aStrings); i++)
        if (c_aStrings[i - 1].nId >= c_aStrings[i].nId)
            return false;
    return true;
}
static_assert(IsAscending(), "a number stands twice or out of order");

} // namespace

std::string_view StringText(int nId)
{
    const auto it = std::lower_bound(std::begin(c_aStrings), std::end(c_aStrings), nId,
                                     [](const StringRow& row, int id) { return row.nId < id; });
    return it != std::end(c_aStrings) && it->nId == nId ? it->text : std::string_view{};
}

} // namespace kestrune

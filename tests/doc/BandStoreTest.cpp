#include "doc/BandStore.h"

#include "base/Random.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace kestrune {

namespace {

/// A store beside plain rows that are copied whole, which say what it must hold.
struct Checked {
    CBandStore store;
    std::vector<std::vector<std::uint8_t>> rows;

    void Expect(int y, std::size_t nFrom, std::size_t nTo, const char* pszWhen) const
    {
        const std::uint8_t* p = store.RowPart(y, nFrom, nTo);
        ASSERT_TRUE(std::equal(p + nFrom, p + nTo, rows[y].begin() + static_cast<std::ptrdiff_t>(nFrom))) << pszWhen << ", row " << y;
    }
    void ExpectAll(const char* pszWhen) const
    {
        for (int y = 0; y < store.Rows(); y++)
            Expect(y, 0, store.RowBytes(), pszWhen);
    }
};

Checked MakeChecked(int nRows, std::size_t nRowBytes)
{
    Checked made{CBandStore(nRows, nRowBytes), std::vector(nRows, std::vector<std::uint8_t>(nRowBytes))};
    for (int y = 0; y < nRows; y++) {
        std::ranges::generate(made.rows[y], [] { return static_cast<std::uint8_t>(Rand()); });
        std::ranges::copy(made.rows[y], made.store.WriteRow(y));
    }
    return made;
}

int Below(std::size_t n)
{
    return static_cast<int>((static_cast<std::size_t>(Rand()) << 15 | Rand()) % n);
}

} // namespace

/// Copies, whole rows, parts of rows and readers in any order: each store stays what its own writes made of it.
TEST(BandStore, CopiesAndPartsStayApart)
{
    Srand(7);
    constexpr std::size_t c_nRowBytes = 30000; // 8 rows a band
    std::vector<Checked> stores;
    stores.push_back(MakeChecked(43, c_nRowBytes));
    for (int i = 0; i < 4; i++)
        stores.push_back(stores[0]);
    for (int n = 0; n < 6000; n++) {
        Checked& at = stores[Below(stores.size())];
        const int y = Below(43);
        const std::size_t nFrom = Below(c_nRowBytes), nTo = std::min(nFrom + 1 + Below(n % 3 ? 400 : 20000), c_nRowBytes);
        switch (n % 19) {
        case 0: at = stores[Below(stores.size())]; break;
        case 1: at.store.Detach(y / 2, y); break;
        case 2: std::ranges::fill(at.rows[y], n), std::fill_n(at.store.WriteRow(y), c_nRowBytes, n); break;
        case 3: at.Expect(y, 0, c_nRowBytes, "a whole row"); break;
        case 4: case 5: case 6: at.Expect(y, nFrom, nTo, "a part"); break;
        default:
            std::fill(at.rows[y].begin() + static_cast<std::ptrdiff_t>(nFrom), at.rows[y].begin() + static_cast<std::ptrdiff_t>(nTo), n);
            std::fill(at.store.WriteRowPart(y, nFrom, nTo) + nFrom, at.store.WriteRowPart(y, nFrom, nTo) + nTo, n);
        }
        if (HasFatalFailure())
            return;
    }
    for (const Checked& store : stores)
        store.ExpectAll("at the end");
}

/// Readers of one store, and of a copy of it that is written meanwhile, fetch what a part band lacks at the same time.
TEST(BandStore, ManyThreadsFetchOnePartBand)
{
    Srand(11);
    constexpr std::size_t c_nRowBytes = 60000;
    Checked base = MakeChecked(4, c_nRowBytes);
    for (int nRound = 0; nRound < 40; nRound++) {
        Checked painted = base;
        for (int y = 0; y < 4; y++)
            std::fill_n(painted.rows[y].begin() + 30000, 100, 77), std::fill_n(painted.store.WriteRowPart(y, 30000, 30100) + 30000, 100, 77);
        std::atomic<int> nWrong = 0;
        const auto read = [&](int nStep) {
            for (int i = 0; i < 60; i++) {
                const std::size_t nFrom = static_cast<std::size_t>(i) * nStep * 131 % (c_nRowBytes - 500), nTo = nFrom + 500;
                const std::uint8_t* p = painted.store.RowPart(i % 4, nFrom, nTo);
                nWrong += !std::equal(p + nFrom, p + nTo, painted.rows[i % 4].begin() + static_cast<std::ptrdiff_t>(nFrom));
            }
        };
        Checked copy = painted;
        std::thread one(read, 1), two(read, 5), three(read, 7);
        for (int y = 0; y < 4; y++)
            std::fill_n(copy.rows[y].begin() + 100, 900, nRound), std::fill_n(copy.store.WriteRowPart(y, 100, 1000) + 100, 900, nRound);
        one.join();
        two.join();
        three.join();
        EXPECT_EQ(nWrong, 0);
        painted.ExpectAll("after the readers");
        copy.ExpectAll("of the copy");
    }
}

/// The plain picture's one band is shared by all its places, and none of them is left over when each was written.
TEST(BandStore, PlainPictureBecomesPrivateBandByBand)
{
    const std::vector<std::uint8_t> row(30000, 9);
    CBandStore store(20, row);
    EXPECT_EQ(store.PrivateBytes(), 0u);
    for (int y = 0; y < 20; y += store.BandRows())
        store.WriteRow(y)[0] = 1;
    EXPECT_EQ(store.PrivateBytes(), 20 * row.size());
    const CBandStore copy = store;
    EXPECT_EQ(store.PrivateBytes(), 0u);
    EXPECT_TRUE(store.SharesBand(copy, 19));
}

} // namespace kestrune

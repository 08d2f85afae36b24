#include "app/FramePlacement.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <array>

namespace kestrune {

namespace {

constexpr char c_szSection[] = "Frame";
constexpr char c_szKey[] = "FrameWndState";
constexpr std::size_t c_nFields = 11;
constexpr std::int32_t c_nShowNormal = 1;
constexpr std::int32_t c_nShowMaximized = 3;
/// What must show of a window on a screen.
constexpr int c_nLeastWidth = 100;
constexpr int c_nLeastHeight = 30;

} // namespace

std::vector<std::uint8_t> EncodePlacement(const FramePlacement& placement)
{
    const QRect& rc = placement.rcNormal;
    const std::array<std::int32_t, c_nFields> fields{
        static_cast<std::int32_t>(c_nFields * 4), 0, placement.bMaximized ? c_nShowMaximized : c_nShowNormal,
        -1, -1, -1, -1, rc.left(), rc.top(), rc.left() + rc.width(), rc.top() + rc.height()};
    std::vector<std::uint8_t> bytes;
    for (const std::int32_t nField : fields)
        for (int nShift = 0; nShift < 32; nShift += 8)
            bytes.push_back(static_cast<std::uint8_t>(static_cast<std::uint32_t>(nField) >> nShift));
    return bytes;
}

std::optional<FramePlacement> DecodePlacement(std::span<const std::uint8_t> bytes)
{
    std::array<std::int32_t, c_nFields> fields{};
    if (bytes.size() != c_nFields * 4)
        return std::nullopt;
    for (std::size_t i = 0; i < bytes.size(); i++)
        fields[i / 4] |= static_cast<std::int32_t>(static_cast<std::uint32_t>(bytes[i]) << (i % 4 * 8));
    constexpr std::int32_t c_nFarthest = 1 << 20; // sums of such coordinates stay in range
    for (std::size_t i = 7; i < c_nFields; i++)
        if (fields[i] < -c_nFarthest || fields[i] > c_nFarthest)
            return std::nullopt;
    FramePlacement placement;
    placement.rcNormal = QRect(fields[7], fields[8], fields[9] - fields[7], fields[10] - fields[8]);
    placement.bMaximized = fields[2] == c_nShowMaximized;
    if (fields[0] != static_cast<std::int32_t>(c_nFields * 4) || placement.rcNormal.isEmpty())
        return std::nullopt;
    return placement;
}

bool IsOnScreen(const QRect& rc)
{
    for (const QScreen* pScreen : QGuiApplication::screens()) {
        // The caption is what the user takes a window by, so its top edge counts.
        const QRect rcSeen = pScreen->availableGeometry() & QRect(rc.x(), rc.y(), rc.width(), std::max(1, std::min(rc.height(), c_nLeastHeight)));
        if (rcSeen.width() >= std::min(c_nLeastWidth, rc.width()) && rcSeen.height() >= std::min(c_nLeastHeight, rc.height()) / 2)
            return true;
    }
    return false;
}

bool RestorePlacement(QWidget& frame, const CProfile& profile)
{
    const auto bytes = profile.FindBinary(c_szSection, c_szKey);
    const auto placement = bytes ? DecodePlacement(*bytes) : std::nullopt;
    if (!placement || !IsOnScreen(placement->rcNormal))
        return false;
    frame.setGeometry(placement->rcNormal);
    if (placement->bMaximized)
        frame.setWindowState(frame.windowState() | Qt::WindowMaximized);
    return true;
}

void SavePlacement(const QWidget& frame, CProfile& profile)
{
    FramePlacement placement;
    placement.bMaximized = frame.isMaximized();
    placement.rcNormal = frame.isMaximized() || frame.isFullScreen() ? frame.normalGeometry() : frame.geometry();
    profile.WriteBinary(c_szSection, c_szKey, EncodePlacement(placement));
}

} // namespace kestrune

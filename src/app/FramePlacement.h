#pragma once

#include "base/Profile.h"

#include <QRect>

#include <optional>
#include <span>
#include <vector>

class QWidget;

namespace kestrune {

/// Where the main frame stood and how it was shown.
struct FramePlacement {
    QRect rcNormal;
    bool bMaximized = false;
    bool operator==(const FramePlacement&) const = default;
};

/// The 44 bytes of a placement: length, flags, show state (1 normal, 3 maximised), the points of the minimised and the
/// maximised window (both -1, -1: left to the system), then left, top, right and bottom of the normal one; little-endian.
std::vector<std::uint8_t> EncodePlacement(const FramePlacement& placement);
/// Nothing when the bytes are no placement.
std::optional<FramePlacement> DecodePlacement(std::span<const std::uint8_t> bytes);

/// True when enough of the rectangle lies on one of the screens to take the window by its caption.
bool IsOnScreen(const QRect& rc);

/// Restores the placement kept as "FrameWndState"; one that lies off every screen is ignored. True when it was used.
bool RestorePlacement(QWidget& frame, const CProfile& profile);
void SavePlacement(const QWidget& frame, CProfile& profile);

} // namespace kestrune

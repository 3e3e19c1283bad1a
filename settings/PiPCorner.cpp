#include "settings/PiPCorner.h"

namespace mirrolet {

std::string rawValue(PiPCorner corner) {
    switch (corner) {
    case PiPCorner::bottomRight:
        return "bottomRight";
    case PiPCorner::bottomLeft:
        return "bottomLeft";
    case PiPCorner::topRight:
        return "topRight";
    case PiPCorner::topLeft:
        return "topLeft";
    }
    return {};
}

std::optional<PiPCorner> pipCornerFromRawValue(std::string_view raw) {
    for (const auto corner : allPiPCorners) {
        if (rawValue(corner) == raw)
            return corner;
    }
    return std::nullopt;
}

} // namespace mirrolet

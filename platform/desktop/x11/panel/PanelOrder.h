#pragma once

#include "platform/desktop/WindowList.h"

#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// The floating panels that are shown, and where each belongs among the windows of the screen. Only decides;
/// PanelStack asks the server and moves the windows. Stacking orders are bottom to top.
class PanelOrder {
  public:
    using Windows = std::vector<WindowNumber>;

    enum class Place { above, below };
    /// A window that has to be placed right above or right below another one.
    struct Move {
        WindowNumber window;
        Place place;
        WindowNumber sibling;
        friend bool operator==(const Move&, const Move&) = default;
    };

    [[nodiscard]] bool empty() const { return panels.empty(); }
    /// Puts a panel in front of the others of its level.
    void show(WindowNumber panel, int level);
    /// False if the panel is not shown.
    bool hide(WindowNumber panel);
    /// False if the panel is not shown.
    bool setLevel(WindowNumber panel, int level);
    /// The window that belongs right below a panel; 0 for none.
    void setShadow(WindowNumber panel, WindowNumber shadow);

    /// The windows above the lowest panel, without the panels themselves.
    [[nodiscard]] Windows windowsAbove(const Windows& order) const;
    /// What has to move so that all panels are above `opponent` (none: wherever they are), sorted by level,
    /// and their shadows below them. To be done one after the other.
    [[nodiscard]] std::vector<Move> moves(Windows order, std::optional<WindowNumber> opponent) const;

  private:
    struct Panel {
        WindowNumber window;
        int level;
    };

    [[nodiscard]] bool isPanel(WindowNumber window) const;
    void addShadowMoves(const Windows& order, std::vector<Move>& moves) const;

    std::vector<Panel> panels; ///< Bottom to top.
    std::map<WindowNumber, WindowNumber> shadows;
};

} // namespace mirrolet::platform::desktop::x11

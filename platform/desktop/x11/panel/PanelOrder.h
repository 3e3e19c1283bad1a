#pragma once

#include "platform/desktop/WindowList.h"

#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Keeps the floating panels that are shown, and decides where each belongs among the windows of the screen.
/// This class only decides; PanelStack asks the server and moves the windows. Stacking orders are bottom to
/// top.
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
    /// Returns false if the panel is not shown.
    bool hide(WindowNumber panel);
    /// Returns false if the panel is not shown.
    bool setLevel(WindowNumber panel, int level);
    /// Sets the window that belongs right below a panel; 0 for none.
    void setShadow(WindowNumber panel, WindowNumber shadow);

    /// Returns the windows above the lowest panel, without the panels themselves.
    [[nodiscard]] Windows windowsAbove(const Windows& order) const;
    /// Returns the moves, in order, that put all panels above `opponent`, sort the panels by level, and put
    /// each shadow below its panel. Without an opponent, the panels are only sorted where they are.
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

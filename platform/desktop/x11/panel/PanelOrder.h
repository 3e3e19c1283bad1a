#pragma once

#include "platform/desktop/WindowList.h"

#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::x11 {

/// Stores the floating panels that are shown, and decides where each panel belongs among the windows of the
/// screen. This class only decides, while PanelStack asks the server and moves the windows. All stacking
/// orders are bottom to top.
class PanelOrder {
  public:
    using Windows = std::vector<WindowNumber>;

    enum class Place { above, below };
    /// A window that has to be moved right above or right below its new sibling.
    struct Move {
        WindowNumber window;
        Place place;
        WindowNumber sibling;
        friend bool operator==(const Move&, const Move&) = default;
    };

    [[nodiscard]] bool empty() const { return panels.empty(); }
    /// Adds a panel in front of the other panels of its level. Moves the panel there if it is shown already.
    void show(WindowNumber panel, int level);
    /// Removes a panel. Returns false if the panel is not shown.
    bool hide(WindowNumber panel);
    /// Changes a panel's level. Returns false if the panel is not shown.
    bool setLevel(WindowNumber panel, int level);
    /// Sets the shadow window that belongs right below a panel. 0 means no shadow.
    void setShadow(WindowNumber panel, WindowNumber shadow);

    /// Returns the windows above the lowest panel, without the panels themselves. `order` is the stacking
    /// order.
    [[nodiscard]] Windows windowsAbove(const Windows& order) const;
    /// Returns the moves, in order, that put all panels above the window `opponent`, sort the panels by
    /// level, and put each shadow below its panel. Without an opponent, the panels are only sorted among
    /// themselves. `order` is the stacking order.
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

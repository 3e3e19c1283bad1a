#pragma once

#include "platform/desktop/wayland/ext/Toplevel.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Finds out which entries of the two lists are the same window. No protocol says so, but both lists have a
/// window's title and application, and compositors list the windows in the same order.
class ToplevelPairs {
  public:
    /// Pairs the entries anew. Both lists have the order in which the compositor listed the windows. A pair
    /// stays while its titles differ and neither entry fits another one, because a compositor changes a title
    /// in one list after the other.
    void update(const std::vector<ListedToplevel>& listed, const std::vector<ManagedToplevel>& managed);
    /// Returns the id of the managed entry that is the same window, or none if it is not known.
    [[nodiscard]] std::optional<std::uint32_t> partnerOf(WindowNumber number) const;

  private:
    std::map<WindowNumber, std::uint32_t> partners;
};

} // namespace mirrolet::platform::desktop::wayland

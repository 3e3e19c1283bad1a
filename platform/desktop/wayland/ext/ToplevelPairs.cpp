#include "platform/desktop/wayland/ext/ToplevelPairs.h"

#include <algorithm>
#include <set>
#include <utility>

namespace mirrolet::platform::desktop::wayland {

namespace {

/// Returns whether both entries may describe the same window. An X11 window can lack its application in one
/// of the lists.
bool fits(const ListedToplevel& listed, const ManagedToplevel& managed) {
    return listed.title == managed.title && (listed.applicationId == managed.applicationId ||
                                             listed.applicationId.empty() || managed.applicationId.empty());
}

/// Returns whether no application is missing, so that the pair is more certain than others.
bool fitsExactly(const ListedToplevel& listed, const ManagedToplevel& managed) {
    return fits(listed, managed) && listed.applicationId == managed.applicationId;
}

/// A round of pairing, which begins without pairs.
class Pairing {
  public:
    using Fits = bool (*)(const ListedToplevel&, const ManagedToplevel&);
    using Partners = std::map<WindowNumber, std::uint32_t>;

    Pairing(const std::vector<ListedToplevel>& listed, const std::vector<ManagedToplevel>& managed)
        : listed(listed), managed(managed) {}

    /// Takes over the pairs whose entries are free and fit each other.
    void keep(const Partners& earlier, Fits accepts) {
        for (const auto& one : listed) {
            const auto partner = earlier.find(one.number);
            if (partner == earlier.end() || pairs.contains(one.number))
                continue;
            const auto other =
                std::ranges::find(managed, partner->second, [](const auto& each) { return each.id; });
            if (other != managed.end() && !taken.contains(other->id) && accepts(one, *other))
                add(one, *other);
        }
    }
    /// Pairs each free entry with the first free one that fits.
    void match(Fits accepts) {
        for (const auto& one : listed) {
            if (pairs.contains(one.number))
                continue;
            const auto other = std::ranges::find_if(managed, [&](const ManagedToplevel& each) {
                return !taken.contains(each.id) && accepts(one, each);
            });
            if (other != managed.end())
                add(one, *other);
        }
    }
    [[nodiscard]] Partners result() && { return std::move(pairs); }

  private:
    void add(const ListedToplevel& one, const ManagedToplevel& other) {
        pairs[one.number] = other.id;
        taken.insert(other.id);
    }

    const std::vector<ListedToplevel>& listed;
    const std::vector<ManagedToplevel>& managed;
    Partners pairs;
    std::set<std::uint32_t> taken;
};

} // namespace

void ToplevelPairs::update(const std::vector<ListedToplevel>& listed,
                           const std::vector<ManagedToplevel>& managed) {
    Pairing pairing(listed, managed);
    pairing.keep(partners, fits);
    pairing.match(fitsExactly);
    pairing.match(fits);
    pairing.keep(partners, [](const ListedToplevel&, const ManagedToplevel&) { return true; });
    partners = std::move(pairing).result();
}

std::optional<std::uint32_t> ToplevelPairs::partnerOf(WindowNumber number) const {
    const auto found = partners.find(number);
    return found == partners.end() ? std::nullopt : std::optional(found->second);
}

} // namespace mirrolet::platform::desktop::wayland

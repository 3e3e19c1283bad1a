#pragma once

#include "platform/desktop/HotKeys.h"
#include "platform/desktop/fake/Misuses.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::desktop::fake {

/// A keyboard that a test presses. Notes three misuses: a grab under a number in use, a grab before the
/// handler of presses is set, and a grab that is still held at the end. Main thread, except press().
class FakeHotKeys final : public HotKeys {
  public:
    /// An evdev code and modifiers.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;

    explicit FakeHotKeys(std::shared_ptr<Misuses> misuses) : misuses(std::move(misuses)) {}

    /// Lets another program hold the combination.
    void take(Combination combination) { taken.insert(combination); }
    /// Removes the key from this keyboard.
    void removeKey(std::uint32_t evdevCode) { missingKeys.insert(evdevCode); }
    /// Presses the keys once. Returns false if no grab took the press.
    bool press(Combination combination) const;
    [[nodiscard]] std::vector<Combination> held() const;
    /// Returns how often a combination was grabbed.
    [[nodiscard]] int grabsMade() const { return grabCount; }
    [[nodiscard]] bool isSuspended() const { return suspended; }

    void setPressed(std::function<void(std::uint32_t grab)> handler) override;
    GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) override;
    void release(std::uint32_t number) override { grabs.erase(number); }
    void suspend(bool on) override { suspended = on; }
    std::string keyLabel(std::uint32_t evdevCode) override { return labels[evdevCode]; }

    std::map<std::uint32_t, std::string> labels; ///< The labels of the layout, by evdev code.

  private:
    std::shared_ptr<Misuses> misuses;
    std::function<void(std::uint32_t)> pressed;
    std::map<std::uint32_t, Combination> grabs;
    std::set<Combination> taken;
    std::set<std::uint32_t> missingKeys;
    int grabCount = 0;
    bool suspended = false;
};

} // namespace mirrolet::platform::desktop::fake

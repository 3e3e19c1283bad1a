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

/// Hot keys on a keyboard that a test scripts. Notes three misuses: a second setPressed(), a grab() before
/// setPressed(), and a grab() with a number in use. All functions except press() must be called on the main
/// thread.
class FakeHotKeys final : public HotKeys {
  public:
    /// An evdev code and modifiers.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;

    explicit FakeHotKeys(std::shared_ptr<Misuses> misuses) : misuses(std::move(misuses)) {}

    /// Makes grab() return GrabResult::taken for this combination, as if another program held it.
    void take(Combination combination) { taken.insert(combination); }
    /// Makes grab() return GrabResult::invalid for this key, as if the keyboard lacked it.
    void removeKey(std::uint32_t evdevCode) { missingKeys.insert(evdevCode); }
    /// Presses a combination once. Returns false if no grab has this combination.
    bool press(Combination combination) const;
    [[nodiscard]] std::vector<Combination> held() const;
    /// Returns how often grab() has succeeded.
    [[nodiscard]] int grabsMade() const { return grabCount; }
    [[nodiscard]] bool isSuspended() const { return suspended; }

    void setPressed(std::function<void(std::uint32_t grab)> handler) override;
    GrabResult grab(std::uint32_t number, std::uint32_t evdevCode, std::uint32_t modifiers) override;
    void setTitle(std::uint32_t number, const std::string& title) override { titles[number] = title; }
    void release(std::uint32_t number) override { grabs.erase(number); }
    void suspend(bool on) override { suspended = on; }
    std::string keyLabel(std::uint32_t evdevCode) override { return labels[evdevCode]; }

    std::map<std::uint32_t, std::string> titles; ///< What each grab is for, by its number.
    std::map<std::uint32_t, std::string> labels; ///< The labels in the keyboard layout, by evdev code.

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

#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// The service that keeps the shortcuts of all programs in a session. Used by one thread.
class ShortcutService {
  public:
    enum class Answer {
        granted,
        taken, ///< Another shortcut already has one of the combinations.
        none,  ///< The service did not answer, or answered nothing that makes sense.
    };
    virtual ~ShortcutService() = default;
    /// Adds a shortcut, or changes the shortcut of this name. A press of any of the combinations is then a
    /// press of the shortcut. Calls `answered` later, once, on the same thread. Whatever the answer is, the
    /// shortcut has to be removed with remove().
    virtual void add(const std::string& name, const std::string& title,
                     const std::vector<std::int32_t>& combinations, std::function<void(Answer)> answered) = 0;
    /// Removes a shortcut. An add() that is not answered yet is carried out before.
    virtual void remove(const std::string& name) = 0;
};

} // namespace mirrolet::platform::desktop::wayland

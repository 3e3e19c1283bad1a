#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <functional>
#include <memory>
#include <optional>

namespace mirrolet::platform::swiftui {

/// Gives the content to show next; none if the present content stays.
using NextContent = std::function<std::optional<View>()>;

/// Each widget that is built gets a source of its own.
View switchingView(Observation changes, std::function<NextContent()> makeSource);

/// A view whose content depends on a value. The content is built anew when the value becomes another one, and
/// only then.
template <class Key> class Switching : public Modifiable<Switching<Key>> {
  public:
    Switching(Observation changes, std::function<Key()> key, std::function<View(Key)> content)
        : observation(std::move(changes)), current(std::move(key)), make(std::move(content)) {}

    [[nodiscard]] View body() const {
        return switchingView(observation, [current = current, make = make]() -> NextContent {
            return [current, make, shown = std::make_shared<std::optional<Key>>()]() -> std::optional<View> {
                Key key = current();
                if (*shown == key)
                    return std::nullopt;
                *shown = key;
                return make(key);
            };
        });
    }

  private:
    Observation observation;
    std::function<Key()> current;
    std::function<View(Key)> make;
};

} // namespace mirrolet::platform::swiftui

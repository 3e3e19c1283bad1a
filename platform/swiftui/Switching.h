#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <functional>
#include <memory>
#include <optional>

namespace mirrolet::platform::swiftui {

/// A function that returns the content to show next, or none if the shown content stays.
using NextContent = std::function<std::optional<View>()>;

/// Makes a view that can replace its content. Each widget that is built from the view calls `makeSource` once
/// and so gets its own NextContent. The widget calls its NextContent at first and after each change, and
/// shows the returned content, if any.
View switchingView(Observation changes, std::function<NextContent()> makeSource);

/// A view whose content depends on a value. The content is built again only if the new value differs from the
/// old one.
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

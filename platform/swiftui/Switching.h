#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <functional>
#include <memory>
#include <optional>

namespace mirrolet::platform::swiftui {

/// Returns the content to show next, or none if the present content stays.
using NextContent = std::function<std::optional<View>()>;

/// Makes a view that can replace its content. Each widget built from the view calls `makeSource` once. After
/// each change the widget calls the function that `makeSource` returned, and shows the content that this
/// function returns, if any.
View switchingView(Observation changes, std::function<NextContent()> makeSource);

/// A view whose content depends on a value. The content is built anew only when the value becomes another
/// one.
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

#pragma once

#include "platform/swiftui/Binding.h"
#include "platform/swiftui/View.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace mirrolet::platform::swiftui {

enum class PickerStyle { menu, radioGroup };

/// The parts of a Picker that do not depend on the type of its values.
struct PickerContent {
    std::string label;
    PickerStyle style = PickerStyle::menu;
    std::vector<std::string> choices;
    std::function<std::optional<std::size_t>()> selected; ///< None if the value is not among the choices.
    std::function<void(std::size_t)> select;
    Observation changes;
};

View pickerView(PickerContent content);

/// A control that chooses one of a few values. If the bound value is not among the choices, no choice is
/// shown as chosen, and the value stays until the user chooses.
template <class Value> class Picker : public Modifiable<Picker<Value>> {
  public:
    Picker(std::string label, Binding<Value> selection, std::vector<std::pair<std::string, Value>> choices)
        : title(std::move(label)), value(std::move(selection)), offered(std::move(choices)) {}

    [[nodiscard]] Picker pickerStyle(PickerStyle style) const {
        Picker result = *this;
        result.look = style;
        return result;
    }

    [[nodiscard]] View body() const {
        PickerContent content{title, look, {}, {}, {}, value.changes()};
        for (const auto& choice : offered)
            content.choices.push_back(choice.first);
        content.selected = [value = value, offered = offered]() -> std::optional<std::size_t> {
            const auto found =
                std::find_if(offered.begin(), offered.end(),
                             [now = value.get()](const auto& choice) { return choice.second == now; });
            if (found == offered.end())
                return std::nullopt;
            return static_cast<std::size_t>(found - offered.begin());
        };
        content.select = [value = value, offered = offered](std::size_t index) {
            value.set(offered.at(index).second);
        };
        return pickerView(std::move(content));
    }

  private:
    std::string title;
    Binding<Value> value;
    std::vector<std::pair<std::string, Value>> offered;
    PickerStyle look = PickerStyle::menu;
};

} // namespace mirrolet::platform::swiftui

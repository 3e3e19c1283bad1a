#pragma once

#include "platform/swiftui/Binding.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

class QWidget;

namespace mirrolet::platform::swiftui {

/// Tells a view where it is placed, because some views look different in a form.
struct BuildContext {
    bool inForm = false; ///< True in a form, whose rows have the label at the left.
};

enum class Material { ultraThin };

/// A description of a piece of user interface. A plain value. Building the view makes a widget. From then on
/// the widget follows the bindings of the description. Main thread only.
class View {
  public:
    /// Makes the widget without a parent. The caller gives the widget a parent or deletes the widget.
    using Builder = std::function<QWidget*(const BuildContext&)>;

    explicit View(Builder builder) : builder(std::move(builder)) {}
    /// Makes a view from any value that has a body() function.
    template <class Value>
    requires requires(const Value& value) { {value.body()}; }
    View(const Value& value) : View(View::erased(value.body())) {}

    [[nodiscard]] QWidget* build(const BuildContext& context) const { return builder(context); }

    [[nodiscard]] View padding(double points) const;
    [[nodiscard]] View verticalPadding(double points) const;
    /// Gives the view a fixed size and centres the content in it.
    [[nodiscard]] View frame(double width, double height) const;
    [[nodiscard]] View minHeight(double height) const;
    /// Makes the view as wide as there is room and centres the content in it.
    [[nodiscard]] View fullWidth() const;
    /// Draws a filled rounded rectangle behind the content, and a hairline around the rectangle.
    [[nodiscard]] View background(Material material, double cornerRadius) const;
    /// Sets the name that assistive software reads.
    [[nodiscard]] View accessibilityLabel(std::string label) const;
    /// Runs the action after each change of the observed object, while the view exists.
    [[nodiscard]] View onChange(Observation changes, std::function<void()> action) const;
    /// Shows a message with an "OK" button in front of the view's window while `message` is not empty.
    /// Dismissing the alert clears the message.
    [[nodiscard]] View alert(std::string title, Binding<std::optional<std::string>> message) const;
    /// Runs the action each time that the view comes on screen. Restoring a minimised window does not count.
    [[nodiscard]] View task(std::function<void()> action) const;

  private:
    static const View& erased(const View& view) { return view; }
    template <class Value> static View erased(const Value& value) { return View(value); }

    Builder builder;
};

/// A base class that gives the modifier functions of View to a value with a body() function.
template <class Self> class Modifiable {
  public:
    [[nodiscard]] View padding(double points) const { return view().padding(points); }
    [[nodiscard]] View verticalPadding(double points) const { return view().verticalPadding(points); }
    [[nodiscard]] View frame(double width, double height) const { return view().frame(width, height); }
    [[nodiscard]] View minHeight(double height) const { return view().minHeight(height); }
    [[nodiscard]] View fullWidth() const { return view().fullWidth(); }
    [[nodiscard]] View accessibilityLabel(std::string label) const {
        return view().accessibilityLabel(std::move(label));
    }
    [[nodiscard]] View onChange(Observation changes, std::function<void()> action) const {
        return view().onChange(std::move(changes), std::move(action));
    }
    [[nodiscard]] View alert(std::string title, Binding<std::optional<std::string>> message) const {
        return view().alert(std::move(title), std::move(message));
    }
    [[nodiscard]] View task(std::function<void()> action) const { return view().task(std::move(action)); }

  private:
    [[nodiscard]] View view() const { return View(static_cast<const Self&>(*this)); }
};

} // namespace mirrolet::platform::swiftui

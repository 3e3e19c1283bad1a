// Reads what a program tells assistive software. Prints a line for each accessible object that is visible, in
// the order of the accessibility tree. The fields of a line are role, name, label, description, states, box
// and text, separated by tabs.

#include <atspi/atspi.h>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

namespace {

struct Release {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename T> using Owned = std::unique_ptr<T, Release>;

std::string taken(char* text) {
    const std::string result = text != nullptr ? text : "";
    g_free(text);
    return result;
}

std::string states(AtspiAccessible* object) {
    const Owned<AtspiStateSet> set(atspi_accessible_get_state_set(object));
    std::string result;
    for (const auto& [state, name] :
         {std::pair{ATSPI_STATE_SHOWING, "showing "}, std::pair{ATSPI_STATE_FOCUSED, "focused "},
          std::pair{ATSPI_STATE_CHECKED, "checked "}, std::pair{ATSPI_STATE_SELECTED, "selected "},
          std::pair{ATSPI_STATE_FOCUSABLE, "focusable "}})
        if (set && atspi_state_set_contains(set.get(), state))
            result += name;
    return result;
}

std::string box(AtspiAccessible* object) {
    const Owned<AtspiComponent> component(atspi_accessible_get_component_iface(object));
    AtspiRect* rect =
        component ? atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr) : nullptr;
    if (rect == nullptr)
        return "0 0 0 0";
    const std::string result = std::to_string(rect->x) + " " + std::to_string(rect->y) + " " +
                               std::to_string(rect->width) + " " + std::to_string(rect->height);
    g_free(rect);
    return result;
}

/// Returns the name of the object's label, or an empty text if the object has no label.
std::string label(AtspiAccessible* object) {
    std::string result;
    GArray* relations = atspi_accessible_get_relation_set(object, nullptr);
    for (guint index = 0; relations != nullptr && index < relations->len; ++index) {
        const Owned<AtspiRelation> relation(g_array_index(relations, AtspiRelation*, index));
        if (atspi_relation_get_relation_type(relation.get()) != ATSPI_RELATION_LABELLED_BY)
            continue;
        const Owned<AtspiAccessible> target(atspi_relation_get_target(relation.get(), 0));
        result = taken(atspi_accessible_get_name(target.get(), nullptr));
    }
    if (relations != nullptr)
        g_array_unref(relations);
    return result;
}

std::string content(AtspiAccessible* object) {
    const Owned<AtspiText> text(atspi_accessible_get_text_iface(object));
    return text ? taken(atspi_text_get_text(text.get(), 0, -1, nullptr)) : "";
}

/// Returns the role's name. Later releases of the library call a push button only "button".
std::string role(AtspiAccessible* object) {
    const std::string name = taken(atspi_accessible_get_role_name(object, nullptr));
    return name == "button" ? "push button" : name;
}

void print(AtspiAccessible* object) {
    const std::string state = states(object);
    if (state.find("showing") != std::string::npos)
        std::cout << role(object) << '\t' << taken(atspi_accessible_get_name(object, nullptr)) << '\t'
                  << label(object) << '\t' << taken(atspi_accessible_get_description(object, nullptr)) << '\t'
                  << state << '\t' << box(object) << '\t' << content(object) << '\n';
    const int count = atspi_accessible_get_child_count(object, nullptr);
    for (int index = 0; index < count; ++index)
        if (const Owned<AtspiAccessible> child{atspi_accessible_get_child_at_index(object, index, nullptr)})
            print(child.get());
}

} // namespace

int main(int count, char** values) {
    if (count != 2 || atspi_init() != 0)
        return 2;
    const Owned<AtspiAccessible> desktop(atspi_get_desktop(0));
    const int programs = atspi_accessible_get_child_count(desktop.get(), nullptr);
    for (int index = 0; index < programs; ++index) {
        const Owned<AtspiAccessible> program(
            atspi_accessible_get_child_at_index(desktop.get(), index, nullptr));
        if (program && atspi_accessible_get_process_id(program.get(), nullptr) == guint(std::atoi(values[1])))
            print(program.get());
    }
    return 0;
}

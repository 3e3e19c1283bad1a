#pragma once

#include "platform/swiftui/View.h"

#include <string>
#include <vector>

namespace mirrolet::platform::swiftui {

/// A group of rows in a Form, with or without a header above the group.
class Section : public Modifiable<Section> {
  public:
    explicit Section(std::vector<View> rows) : content(std::move(rows)) {}
    Section(std::string header, std::vector<View> rows)
        : title(std::move(header)), content(std::move(rows)) {}
    [[nodiscard]] View body() const;

  private:
    std::string title;
    std::vector<View> content;
};

/// A form in the grouped style: sections below one another, scrolled where they do not fit.
class Form : public Modifiable<Form> {
  public:
    explicit Form(std::vector<View> sections) : content(std::move(sections)) {}
    [[nodiscard]] View body() const;

  private:
    std::vector<View> content;
};

} // namespace mirrolet::platform::swiftui

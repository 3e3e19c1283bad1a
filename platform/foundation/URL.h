#pragma once

#include <string>

namespace mirrolet::platform {

/// A link, or a file by its path. A plain value.
class URL {
  public:
    /// Makes a link from its text, such as "https://example.org". The text is not checked.
    explicit URL(std::string absoluteString) : text(std::move(absoluteString)) {}
    static URL fileURLWithPath(std::string path);

    /// Returns the text of a link, or the path of a file.
    [[nodiscard]] const std::string& absoluteString() const { return text; }
    /// Returns the path of a file; empty for a link.
    [[nodiscard]] std::string path() const { return file ? text : std::string(); }
    [[nodiscard]] std::string lastPathComponent() const;
    /// Returns the letters after the last dot of the last component, in their original case. Empty if there
    /// is no dot, or if the only dot is the one that makes a file hidden.
    [[nodiscard]] std::string pathExtension() const;
    [[nodiscard]] URL deletingPathExtension() const;
    [[nodiscard]] URL deletingLastPathComponent() const;
    [[nodiscard]] URL appendingPathComponent(const std::string& component) const;

    friend bool operator==(const URL&, const URL&) = default;

  private:
    std::string text;
    bool file = false;
};

} // namespace mirrolet::platform

#pragma once

#include <string>

namespace mirrolet::platform {

/// A link, or the path of a file. A plain value.
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
    /// Returns what follows the last dot of the file name, in its original case. Returns an empty string if
    /// there is no dot, or if the only dot is the first character of a hidden file's name.
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

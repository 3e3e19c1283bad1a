#pragma once

#include <string>

namespace mirrolet::platform {

/// A link, or a file by its path. A plain value.
class URL {
  public:
    /// A link as it is written, such as "https://example.org". Not checked.
    explicit URL(std::string absoluteString) : text(std::move(absoluteString)) {}
    static URL fileURLWithPath(std::string path);

    /// The link as it is written; of a file, its path.
    [[nodiscard]] const std::string& absoluteString() const { return text; }
    /// The path of a file; of a link, nothing.
    [[nodiscard]] std::string path() const { return file ? text : std::string(); }
    [[nodiscard]] std::string lastPathComponent() const;
    /// The letters after the last dot of the last component, as they are written; empty without a dot, and
    /// for the dot that makes a file hidden.
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

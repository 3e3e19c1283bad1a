#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace mirrolet::harness {

using Environment = std::map<std::string, std::string>;

/// A temporary home directory. A program that runs in the sandbox does not read or write the developer's own
/// files. The destructor removes the directory.
class Sandbox {
  public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return root; }
    [[nodiscard]] std::filesystem::path configHome() const { return root / "config"; }
    [[nodiscard]] std::filesystem::path dataHome() const { return root / "data"; }
    /// Returns HOME, the XDG folders, PATH and the variables of sanitizers. Leaves out the display and the
    /// session bus.
    [[nodiscard]] Environment environment() const;
    /// Writes a file below the home directory, with its parent directories. Returns the full path.
    std::filesystem::path write(const std::filesystem::path& relative, const std::string& text) const;

    static std::string read(const std::filesystem::path& file);

  private:
    std::filesystem::path root;
};

} // namespace mirrolet::harness

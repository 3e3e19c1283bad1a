#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace mirrolet::harness {

using Environment = std::map<std::string, std::string>;

/// A temporary home: nothing that runs in it reads or writes the developer's own files. Removed with the
/// object.
class Sandbox {
  public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return root; }
    [[nodiscard]] std::filesystem::path configHome() const { return root / "config"; }
    [[nodiscard]] std::filesystem::path dataHome() const { return root / "data"; }
    /// HOME, XDG folders, PATH and what sanitizers read; no display and no bus.
    [[nodiscard]] Environment environment() const;
    /// Writes a file below the folder, making its parents. Gives the full path.
    std::filesystem::path write(const std::filesystem::path& relative, const std::string& text) const;

    static std::string read(const std::filesystem::path& file);

  private:
    std::filesystem::path root;
};

} // namespace mirrolet::harness

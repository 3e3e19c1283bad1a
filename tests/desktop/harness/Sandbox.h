#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace mirrolet::harness {

using Environment = std::map<std::string, std::string>;

/// Makes a temporary home directory for a program, so that the program does not read or write the developer's
/// own files. The destructor removes the directory.
class Sandbox {
  public:
    Sandbox();
    ~Sandbox();
    Sandbox(const Sandbox&) = delete;
    Sandbox& operator=(const Sandbox&) = delete;

    [[nodiscard]] const std::filesystem::path& folder() const { return root; }
    [[nodiscard]] std::filesystem::path configHome() const { return root / "config"; }
    [[nodiscard]] std::filesystem::path dataHome() const { return root / "data"; }
    /// Returns an environment with HOME, the XDG folders, PATH and the variables of sanitizers. The
    /// environment contains neither a display nor a session bus.
    [[nodiscard]] Environment environment() const;
    /// Writes a file below the home directory, and makes the file's parent directories. Returns the file's
    /// full path.
    std::filesystem::path write(const std::filesystem::path& relative, const std::string& text) const;

    static std::string read(const std::filesystem::path& file);

  private:
    std::filesystem::path root;
};

} // namespace mirrolet::harness

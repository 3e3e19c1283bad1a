#pragma once

#include "platform/foundation/PropertyList.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

/// The user defaults: typed values under string keys, in one JSON file,
/// `$XDG_CONFIG_HOME/mirrolet/defaults.json` (mode 0600, replaced atomically). The file is written a moment
/// after the last change, and by flush(). A file that cannot be read is renamed, and one line is logged. If
/// the folder cannot be written, the values are kept in memory, and one line is logged. Unknown keys stay in
/// the file. Any thread.
class UserDefaults {
  public:
    /// Returns the program's own defaults, which are read on first use.
    static UserDefaults& standard();

    explicit UserDefaults(std::string filePath);
    ~UserDefaults();
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// Returns the value under a key, or a null value if there is none.
    [[nodiscard]] PropertyList object(const std::string& key) const;
    void set(const std::string& key, PropertyList value);
    /// Writes changes that are not in the file yet. Called at exit, and on a signal that ends the program.
    void flush();

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform

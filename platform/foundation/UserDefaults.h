#pragma once

#include "platform/foundation/PropertyList.h"

#include <memory>
#include <string>

namespace mirrolet::platform {

/// The user defaults: typed values under string keys, in one JSON file,
/// `$XDG_CONFIG_HOME/mirrolet/defaults.json` (mode 0600, replaced atomically). Changes are written behind, a
/// moment after the last one, and by flush(). A file that cannot be read is set aside under another name and
/// said so once; a folder that cannot be written is said once and the values live on in memory. Keys that
/// nobody here knows stay in the file. Any thread.
class UserDefaults {
  public:
    /// The program's own, read on first use.
    static UserDefaults& standard();

    explicit UserDefaults(std::string filePath);
    ~UserDefaults();
    UserDefaults(const UserDefaults&) = delete;
    UserDefaults& operator=(const UserDefaults&) = delete;

    /// The value under a key; null if there is none.
    [[nodiscard]] PropertyList object(const std::string& key) const;
    void set(const std::string& key, PropertyList value);
    /// Writes now what is not written yet. At exit, and on a signal that ends the program.
    void flush();

  private:
    struct State;
    std::shared_ptr<State> state;
};

} // namespace mirrolet::platform

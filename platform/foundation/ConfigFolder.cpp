#include "platform/foundation/ConfigFolder.h"

#include <glib.h>

#include <cstdlib>

namespace mirrolet::platform {

std::string userConfigFolder() {
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && folder[0] == '/')
        return folder;
    return std::string(g_get_home_dir()) + "/.config";
}

} // namespace mirrolet::platform

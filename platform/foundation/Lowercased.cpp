#include "platform/foundation/Lowercased.h"

#include <QString>

namespace mirrolet::platform {

std::string lowercased(const std::string& text) {
    return QString::fromStdString(text).toLower().toStdString();
}

} // namespace mirrolet::platform

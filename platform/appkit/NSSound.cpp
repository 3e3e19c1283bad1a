#include "platform/appkit/NSSound.h"

#include <QApplication>

namespace mirrolet::platform {

void NSSound::beep() {
    QApplication::beep();
}

} // namespace mirrolet::platform

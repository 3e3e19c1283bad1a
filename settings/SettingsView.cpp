#include "settings/SettingsView.h"

#include "platform/swiftui/TabView.h"
#include "settings/GeneralSettingsView.h"
#include "settings/PiPSettingsView.h"

namespace mirrolet {

using namespace platform::swiftui;

View SettingsView::body() const {
    return TabView({{"General", "gearshape", GeneralSettingsView()}, {"PiP", "pip", PiPSettingsView()}})
        .frame(460, 560);
}

} // namespace mirrolet

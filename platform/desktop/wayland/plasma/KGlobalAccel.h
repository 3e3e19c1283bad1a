#pragma once

#include "platform/desktop/wayland/plasma/ShortcutService.h"
#include "platform/foundation/GLibPointer.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace mirrolet::platform::desktop::wayland {

/// Plasma's shortcut service, org.kde.kglobalaccel, which is a part of KWin. No call waits for an answer. All
/// members are used on the session bus's thread.
class KGlobalAccel final : public ShortcutService, public std::enable_shared_from_this<KGlobalAccel> {
  public:
    struct Handlers {
        /// Called once at the start and after each change: with true if the service runs, with false if it
        /// does not. A service that is reported to run holds no shortcut of this program yet.
        std::function<void(bool)> available;
        /// Called with the name of the shortcut for each press and each auto-repeat.
        std::function<void(const std::string&)> pressed;
        /// Called with the name of the shortcut once one of its keys is up again.
        std::function<void(const std::string&)> released;
    };

    static std::shared_ptr<KGlobalAccel> make() { return std::shared_ptr<KGlobalAccel>(new KGlobalAccel); }
    ~KGlobalAccel() override { end(); }
    KGlobalAccel(const KGlobalAccel&) = delete;
    KGlobalAccel& operator=(const KGlobalAccel&) = delete;

    void setHandlers(Handlers with) { handlers = std::move(with); }
    /// Uses the service through this connection to the bus from now on. nullptr means that there is no bus.
    void use(GDBusConnection* bus);
    /// Sends the calls that are not sent yet, then stops using the connection. No handler is called from then
    /// on.
    void end();

    void add(const std::string& name, const std::string& title, const std::vector<std::int32_t>& combinations,
             std::function<void(Answer)> answered) override;
    void remove(const std::string& name) override;

  private:
    KGlobalAccel() = default;
    void follow();
    void appeared();
    void removeLeftovers(GVariant* actions);
    void askForOthers(const std::string& name, std::vector<std::int32_t> combinations,
                      std::function<void(Answer)> answered);
    void handle(std::string_view signal, GVariant* parameters) const;
    void call(const char* method, GVariant* parameters);
    void call(const char* method, GVariant* parameters, const char* answerType,
              std::function<void(GVariant*)> answered);

    Handlers handlers;
    GLibPointer<GDBusConnection> connection;
    guint nameWatch = 0;
    guint signalWatch = 0;
};

} // namespace mirrolet::platform::desktop::wayland

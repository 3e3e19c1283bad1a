#pragma once

#include "platform/desktop/wayland/ext/ToplevelModel.h"
#include "platform/desktop/wayland/session/WaylandConnection.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

struct ext_foreign_toplevel_handle_v1;
struct ext_foreign_toplevel_list_v1;
struct zwlr_foreign_toplevel_manager_v1;

namespace mirrolet::platform::desktop::wayland {

/// Keeps a list of all windows, those of Wayland and of X11 applications. The windows come from
/// ext_foreign_toplevel_list_v1, and what is active and minimized from zwlr_foreign_toplevel_manager_v1 if
/// the compositor has it. The compositor reports each change, so reading the list costs no request.
class Toplevels {
  public:
    /// To be made before the connection starts.
    explicit Toplevels(WaylandConnection& connection);
    /// To be destroyed after the connection has ended.
    ~Toplevels();
    Toplevels(const Toplevels&) = delete;
    Toplevels& operator=(const Toplevels&) = delete;

    /// Calls `handler` on the connection's thread when the model contains another window. To be called before
    /// the connection handles events.
    void setAppeared(std::function<void()> handler) { appeared = std::move(handler); }
    /// Any thread may read the model. It contains a window once the compositor has described the window.
    [[nodiscard]] const ToplevelModel& model() const { return theModel; }
    /// Returns the protocol's object of a window, or nullptr once the window has been closed. For the
    /// connection's thread only.
    [[nodiscard]] ext_foreign_toplevel_handle_v1* handleOf(WindowNumber number) const;

  private:
    class Listed;
    class Managed;

    void follow(ext_foreign_toplevel_list_v1* list);
    void follow(zwlr_foreign_toplevel_manager_v1* manager);
    void forgetStates();

    // The members below are used by the connection's thread only.
    ext_foreign_toplevel_list_v1* const list;
    zwlr_foreign_toplevel_manager_v1* manager; ///< nullptr if the compositor does not tell the states.
    std::map<WindowNumber, std::unique_ptr<Listed>> listed;
    std::map<std::uint32_t, std::unique_ptr<Managed>> managed;
    WindowNumber lastNumber = 0;
    std::uint32_t lastId = 0;
    std::function<void()> appeared = [] {};

    ToplevelModel theModel;
};

} // namespace mirrolet::platform::desktop::wayland

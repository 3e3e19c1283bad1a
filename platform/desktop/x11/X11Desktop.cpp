#include "platform/desktop/x11/X11Desktop.h"

#include "platform/desktop/x11/X11TrayHosts.h"
#include "platform/desktop/x11/capture/X11FrameImporter.h"
#include "platform/desktop/x11/capture/X11WindowCapture.h"
#include "platform/desktop/x11/keys/X11HotKeys.h"
#include "platform/desktop/x11/mirror/X11WindowPresenter.h"
#include "platform/desktop/x11/panel/PanelStack.h"
#include "platform/desktop/x11/panel/X11PanelWindow.h"
#include "platform/desktop/x11/server/CompositingManager.h"
#include "platform/desktop/x11/server/X11Connection.h"
#include "platform/desktop/x11/windows/PreviousFocus.h"
#include "platform/desktop/x11/windows/X11Applications.h"
#include "platform/desktop/x11/windows/X11WindowList.h"
#include "platform/desktop/x11/windows/X11WorkArea.h"

#include <utility>

namespace mirrolet::platform::desktop::x11 {

namespace {

class X11Desktop final : public Desktop {
  public:
    explicit X11Desktop(std::unique_ptr<X11Connection> opened)
        : connection(std::move(opened)), compositingManager(*connection), panelStack(*connection),
          theApplications(*connection, previousFocus),
          theWindowList(*connection, theApplications,
                        [this](xcb_window_t window) { return theCapture.isCaptured(window); }),
          theCapture(*connection), theHotKeys(*connection), theTrayHosts(*connection),
          theWorkArea(*connection) {}

    void start() { connection->start(); }

    WindowList& windowList() override { return theWindowList; }
    Applications& applications() override { return theApplications; }
    WindowCapture& capture() override { return theCapture; }
    HotKeys& hotKeys() override { return theHotKeys; }
    TrayHosts& trayHosts() override { return theTrayHosts; }
    WorkArea& workArea() override { return theWorkArea; }
    [[nodiscard]] bool isComposited() const override { return compositingManager.running(); }

    AnyCancellable subscribeComposited(std::function<void()> changed) override {
        auto subscription =
            std::make_shared<X11Connection::Subscription>(compositingManager.onChange(std::move(changed)));
        return AnyCancellable([subscription]() mutable { subscription.reset(); });
    }

    std::unique_ptr<WindowPresenter> makePresenter(WindowNumber window) override {
        return X11WindowPresenter::make(*connection, window);
    }

    std::unique_ptr<FrameImporter> makeFrameImporter() override {
        return X11FrameImporter::make(*connection);
    }

    std::unique_ptr<PanelWindow> makePanelWindow(WindowNumber window, PanelStacking stacking) override {
        return std::make_unique<X11PanelWindow>(*connection, panelStack, compositingManager, previousFocus,
                                                window, stacking);
    }

  private:
    // Members are destroyed in reverse order. The connection comes first and is therefore destroyed last,
    // after the other members have unsubscribed their event handlers from it.
    std::unique_ptr<X11Connection> connection;
    PreviousFocus previousFocus;
    CompositingManager compositingManager;
    PanelStack panelStack;
    X11Applications theApplications;
    X11WindowList theWindowList;
    X11WindowCapture theCapture;
    X11HotKeys theHotKeys;
    X11TrayHosts theTrayHosts;
    X11WorkArea theWorkArea;
};

} // namespace

std::unique_ptr<Desktop> makeX11Desktop(std::string& problem, std::function<void()> serverLost) {
    auto connection = X11Connection::open({}, problem);
    if (!connection)
        return nullptr;
    connection->setLost(std::move(serverLost));
    auto desktop = std::make_unique<X11Desktop>(std::move(connection));
    desktop->start();
    return desktop;
}

} // namespace mirrolet::platform::desktop::x11

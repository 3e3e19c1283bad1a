#include "platform/appkit/NSWorkspace.h"

#include "platform/desktop/Desktop.h"
#include "platform/foundation/Bundle.h"
#include "platform/foundation/GLibPointer.h"
#include "platform/foundation/NSLog.h"

#include <QDesktopServices>
#include <QUrl>

#include <utility>

namespace mirrolet::platform {

NSWorkspace& NSWorkspace::shared() {
    static NSWorkspace workspace;
    return workspace;
}

std::optional<NSRunningApplication> NSWorkspace::frontmostApplication() const {
    auto front = desktop::Desktop::current().applications().frontmost();
    if (!front)
        return std::nullopt;
    return NSRunningApplication(front->pid, std::move(front->identifier), std::move(front->name));
}

bool NSWorkspace::open(const URL& link) const {
    const QUrl url(QString::fromStdString(link.absoluteString()));
    if (!url.isValid() || url.scheme().isEmpty())
        return false;
    // An application for the link must exist. This is checked here, because the program that opens links
    // accepts every link, and reports a failure only later in its own window.
    const GLibPointer<GAppInfo> opener(
        g_app_info_get_default_for_uri_scheme(url.scheme().toUtf8().constData()));
    if (opener)
        return QDesktopServices::openUrl(url);
    NSLog("Mirrolet: no application of this desktop opens " + link.absoluteString());
    return false;
}

std::shared_ptr<NSImage> NSWorkspace::iconForFile(const std::string& path) const {
    const auto bundle = Bundle::open(URL::fileURLWithPath(path));
    return NSImage::icon(bundle ? bundle->icon() : std::string());
}

} // namespace mirrolet::platform

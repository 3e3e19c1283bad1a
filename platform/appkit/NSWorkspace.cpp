#include "platform/appkit/NSWorkspace.h"

#include "platform/desktop/Desktop.h"
#include "platform/foundation/Bundle.h"
#include "platform/foundation/GLibPointer.h"

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
    // Looks for an application first, because the opener accepts every link and reports a failure only later,
    // in its own window.
    const GLibPointer<GAppInfo> opener(
        g_app_info_get_default_for_uri_scheme(url.scheme().toUtf8().constData()));
    return opener && QDesktopServices::openUrl(url);
}

std::shared_ptr<NSImage> NSWorkspace::iconForFile(const std::string& path) const {
    const auto bundle = Bundle::open(URL::fileURLWithPath(path));
    return NSImage::icon(bundle ? bundle->icon() : std::string());
}

} // namespace mirrolet::platform

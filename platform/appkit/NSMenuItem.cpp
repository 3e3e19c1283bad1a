#include "platform/appkit/NSMenuItem.h"

#include "platform/appkit/NativeMenuItem.h"

#include <QKeySequence>
#include <QString>

#include <utility>

namespace mirrolet::platform {

namespace {

/// Returns the title with each "&" doubled, because a single "&" would underline the next letter.
QString menuText(const std::string& title) {
    return QString::fromStdString(title).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

NSMenuItem::NSMenuItem(const std::string& title, std::function<void()> action,
                       const std::string& keyEquivalent)
    : nativeItem(std::make_unique<NativeMenuItem>()) {
    auto& native = *nativeItem;
    native.entry.setMenuRole(QAction::NoRole);
    if (!keyEquivalent.empty())
        native.entry.setShortcut(
            QKeySequence(QStringLiteral("Ctrl+") + QString::fromStdString(keyEquivalent)));
    setTitle(title);
    setAction(std::move(action));
    QObject::connect(&native.entry, &QAction::triggered, &native.entry, [this] { nativeItem->perform(); });
}

NSMenuItem::~NSMenuItem() = default;

std::shared_ptr<NSMenuItem> NSMenuItem::separator() {
    auto item = std::make_shared<NSMenuItem>("");
    item->nativeItem->entry.setSeparator(true);
    return item;
}

std::string NSMenuItem::title() const {
    return nativeItem->entry.text().replace(QLatin1String("&&"), QLatin1String("&")).toStdString();
}

void NSMenuItem::setTitle(const std::string& title) {
    nativeItem->entry.setText(menuText(title));
}

void NSMenuItem::setAction(std::function<void()> action) {
    nativeItem->action = std::move(action);
    nativeItem->entry.setEnabled(nativeItem->action != nullptr);
}

} // namespace mirrolet::platform

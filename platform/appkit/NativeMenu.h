#pragma once

#include "platform/appkit/NSMenu.h"

#include <QAction>
#include <QMenu>
#include <QObject>

namespace mirrolet::platform {

struct NSMenuItem::Native {
    QAction entry;
    std::function<void()> action;

    void perform();
};

/// Takes the key equivalents while a menu is open: the toolkit's shortcuts work only in an active window of
/// their own.
class KeyEquivalents final : public QObject {
  protected:
    bool eventFilter(QObject* menu, QEvent* event) override;
};

/// The same entries twice: the toolkit hands the attached menu over to the status bar, which may show it in
/// another process, so that this process can no longer open it itself.
struct NSMenu::Native {
    Native();

    KeyEquivalents keyEquivalents; ///< Outlives the menus that it listens to.
    QMenu attached;
    QMenu popup;
};

} // namespace mirrolet::platform

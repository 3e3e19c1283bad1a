#pragma once

#include <QObject>

namespace mirrolet::platform {

/// An event filter that makes the keys of a menu's entries work while the menu is open. Qt's own shortcuts do
/// not suffice, because they work only while a window of this program is active.
class KeyEquivalents final : public QObject {
  protected:
    bool eventFilter(QObject* menu, QEvent* event) override;
};

} // namespace mirrolet::platform

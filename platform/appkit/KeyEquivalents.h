#pragma once

#include <QObject>

namespace mirrolet::platform {

/// An event filter that handles the key equivalents while a menu is open. Qt's own shortcuts would work only
/// in an active window of their own.
class KeyEquivalents final : public QObject {
  protected:
    bool eventFilter(QObject* menu, QEvent* event) override;
};

} // namespace mirrolet::platform

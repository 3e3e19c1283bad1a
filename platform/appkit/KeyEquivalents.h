#pragma once

#include <QObject>

namespace mirrolet::platform {

/// Takes the key equivalents while a menu is open, because Qt's shortcuts work only in an active window of
/// their own.
class KeyEquivalents final : public QObject {
  protected:
    bool eventFilter(QObject* menu, QEvent* event) override;
};

} // namespace mirrolet::platform

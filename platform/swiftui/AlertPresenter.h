#pragma once

#include "platform/swiftui/Binding.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>

#include <optional>
#include <string>

namespace mirrolet::platform::swiftui {

/// Keeps a message box in front of a widget's window while there is a message.
class AlertPresenter : public QObject {
  public:
    using Message = Binding<std::optional<std::string>>;

    /// Owned by the widget.
    AlertPresenter(QWidget& widget, const std::string& title, Message message);

  private:
    void update();
    void present();

    QWidget& owner;
    QString title;
    Message message;
    QPointer<QMessageBox> box;
};

} // namespace mirrolet::platform::swiftui

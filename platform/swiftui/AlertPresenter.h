#pragma once

#include "platform/swiftui/Binding.h"

#include <QDialog>
#include <QObject>
#include <QPointer>

#include <optional>
#include <string>

namespace mirrolet::platform::swiftui {

/// Shows an alert in front of a widget's window as long as there is a message.
class AlertPresenter : public QObject {
  public:
    using Message = Binding<std::optional<std::string>>;

    /// Creates a presenter that the widget owns.
    AlertPresenter(QWidget& widget, std::string title, Message message);

  private:
    void update();
    void present(const std::string& text);

    QWidget& owner;
    std::string title;
    Message message;
    QPointer<QDialog> dialog;
};

} // namespace mirrolet::platform::swiftui

#pragma once

#include "platform/combine/AnyCancellable.h"

#include <QWidget>

namespace mirrolet::platform::swiftui {

/// Paints an opaque rounded rectangle behind its children, and a hairline around the rectangle.
class MaterialWidget : public QWidget {
  public:
    explicit MaterialWidget(double cornerRadius);
    [[nodiscard]] double cornerRadius() const { return radius; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double radius;
    AnyCancellable compositedSubscription;
};

} // namespace mirrolet::platform::swiftui

#pragma once

#include <QWidget>

namespace mirrolet::platform::swiftui {

/// Paints a material in a rounded rectangle behind its children, and a hairline around it.
class MaterialWidget : public QWidget {
  public:
    explicit MaterialWidget(double cornerRadius) : radius(cornerRadius) {}
    [[nodiscard]] double cornerRadius() const { return radius; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    double radius;
};

} // namespace mirrolet::platform::swiftui

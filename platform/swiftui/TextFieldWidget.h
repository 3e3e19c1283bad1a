#pragma once

#include <QLineEdit>

namespace mirrolet::platform::swiftui {

/// A line to type into, which paints itself in the colours of Theme.
class TextFieldWidget : public QLineEdit {
  public:
    TextFieldWidget();
    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void adoptPlaceholderColor();
};

} // namespace mirrolet::platform::swiftui

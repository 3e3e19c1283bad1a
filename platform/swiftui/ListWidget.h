#pragma once

#include <QListView>

namespace mirrolet::platform::swiftui {

/// The list view of a List, without a frame or a background of its own.
class ListWidget : public QListView {
  public:
    ListWidget();
    [[nodiscard]] QSize sizeHint() const override { return {200, minimumHeight()}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

  protected:
    void focusInEvent(QFocusEvent* event) override;
};

} // namespace mirrolet::platform::swiftui

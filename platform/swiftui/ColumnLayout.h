#pragma once

#include <QLayout>

#include <memory>
#include <vector>

namespace mirrolet::platform::swiftui {

/// Lays items out below one another. With Placement::centred, each item has its ideal width and the column
/// stands in the middle. With Placement::fromTop, each item takes the full width. Items that can grow share
/// the spare height. If the height does not suffice, items shrink down to their minimum. Items of low
/// precedence shrink first. Among items of equal precedence, the upper ones shrink first.
class ColumnLayout : public QLayout {
  public:
    enum class Placement { centred, fromTop };

    explicit ColumnLayout(double spacing, Placement placement = Placement::centred);
    ~ColumnLayout() override;

    /// Sets the precedence of a widget. If the height does not suffice, the widgets with the lowest
    /// precedence shrink first. The default is 0.
    static void setPrecedence(QWidget& widget, int precedence);

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& bounds) override;

  private:
    [[nodiscard]] int totalSpacing() const;
    [[nodiscard]] int totalOf(const std::vector<int>& heights) const;
    [[nodiscard]] std::vector<int> idealHeights(int width) const;
    [[nodiscard]] std::vector<int> fittedHeights(QSize room) const;
    [[nodiscard]] int widthOf(const QLayoutItem& item, int available) const;
    void expand(std::vector<int>& heights, int spare) const;
    void compress(std::vector<int>& heights, int excess) const;

    Placement placement;
    std::vector<std::unique_ptr<QLayoutItem>> items;
};

} // namespace mirrolet::platform::swiftui

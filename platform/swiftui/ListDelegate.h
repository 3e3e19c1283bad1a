#pragma once

#include <QPersistentModelIndex>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <QTimer>

#include <deque>
#include <unordered_map>

class QListView;

namespace mirrolet::platform {
class NSImage;
}

namespace mirrolet::platform::swiftui {

/// Draws the rows of a List and toggles them. Reading a picture may take milliseconds, so rows are drawn
/// without pictures at first, and one picture at a time is read between events.
class ListDelegate : public QStyledItemDelegate {
  public:
    ListDelegate(QListView& view, int imageSide);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

  private:
    void paintCheckBox(QPainter& painter, const QRectF& box, bool isOn) const;
    void paintImage(QPainter& painter, const QRect& place, const QModelIndex& index) const;
    void loadNext();

    QListView& view;
    int imageSide;
    std::unordered_map<std::string, QPixmap> images; ///< The key is the identifier of a row.
    mutable std::deque<QPersistentModelIndex> wanted;
    mutable QTimer loader;
};

} // namespace mirrolet::platform::swiftui

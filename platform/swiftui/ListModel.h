#pragma once

#include "platform/swiftui/List.h"

#include <QAbstractListModel>

namespace mirrolet::platform::swiftui {

/// Gives the rows of a List to Qt's list view.
class ListModel : public QAbstractListModel {
  public:
    ListModel(QObject* parent, List::Content content);

    void reload();
    void refreshChecks();
    [[nodiscard]] const List::Row& row(int index) const { return rows.at(static_cast<std::size_t>(index)); }

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    List::Content source;
    std::vector<List::Row> rows;
};

} // namespace mirrolet::platform::swiftui

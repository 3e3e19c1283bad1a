#include "platform/swiftui/ListModel.h"

namespace mirrolet::platform::swiftui {

ListModel::ListModel(QObject* parent, List::Content content)
    : QAbstractListModel(parent), source(std::move(content)) {}

void ListModel::reload() {
    beginResetModel();
    rows = source.rows();
    endResetModel();
}

void ListModel::refreshChecks() {
    if (!rows.empty())
        Q_EMIT dataChanged(index(0), index(static_cast<int>(rows.size()) - 1), {Qt::CheckStateRole});
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount({}))
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromStdString(row(index.row()).label);
    if (role == Qt::CheckStateRole)
        return source.isOn(row(index.row()).id) ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid())
        return false;
    source.setOn(row(index.row()).id, value.toInt() == Qt::Checked);
    Q_EMIT dataChanged(index, index, {role});
    return true;
}

Qt::ItemFlags ListModel::flags(const QModelIndex& /*index*/) const {
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
}

} // namespace mirrolet::platform::swiftui

#include "desktop/ListRows.h"

namespace vesk {

ListRows::ListRows(QObject& parent, Source source)
    : QAbstractTableModel(&parent), m_Source(std::move(source)) {}

void ListRows::Reload() {
    beginResetModel();
    m_RowCount = m_Source.m_RowCount();
    m_Headings = m_Source.m_Headings ? m_Source.m_Headings() : QStringList();
    endResetModel();
}

int ListRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_RowCount;
}

int ListRows::columnCount(const QModelIndex& parent) const {
    if (parent.isValid()) return 0;
    return m_Source.m_Headings ? static_cast<int>(m_Headings.size()) : 1;
}

QVariant ListRows::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    return m_Source.m_Text(index.row(), index.column());
}

QVariant ListRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return m_Headings.value(section);
}

}  // namespace vesk

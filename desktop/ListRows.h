#pragma once

#include <QAbstractTableModel>
#include <functional>

namespace vesk {

// The rows of a list as the toolkit's views ask for them, read from the control when they are
// shown: a list of a million lines costs no more than those in sight.
class ListRows : public QAbstractTableModel {
public:
    struct Source {
        std::function<int()> m_RowCount;
        std::function<QString(int row, int column)> m_Text;
        std::function<QStringList()> m_Headings;  // of the columns; one column without headings
    };
    ListRows(QObject& parent, Source source);

    // The control's rows or columns are no longer those shown.
    void Reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex&, int role) const override;
    QVariant headerData(int section, Qt::Orientation, int role) const override;

private:
    Source m_Source;
    int m_RowCount = 0;
    QStringList m_Headings;
};

}  // namespace vesk

#include "desktop/ListPeers.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QListView>
#include <QTreeView>

#include "desktop/ListRows.h"
#include "desktop/OwnerDrawnList.h"
#include "desktop/QtText.h"
#include "platform/CListBox.h"
#include "platform/CListCtrl.h"
#include "platform/Keys.h"

namespace vesk {

namespace {

void NotifyParent(const CWnd& control, int code) {
    if (CWnd* parent = control.GetParent()) parent->OnNotify(control.GetDlgCtrlID(), code);
}

// What list boxes and list controls have in common: rows by a model, and a selection that is
// brought both ways without an echo.
class RowsPeer : public ControlPeer {
public:
    RowsPeer(CWnd& window, QAbstractItemView& view, ListRows& rows, Acted acted)
        : ControlPeer(window, view, std::move(acted)), m_View(view), m_Rows(rows) {
        view.setModel(&rows);
        view.setEditTriggers(QAbstractItemView::NoEditTriggers);
        connect(view.selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
            if (!m_ShowsState) Act([this] { SelectInControl(SelectedRows()); });
        });
    }

    void SyncContent() override {
        m_ShowsState = true;
        m_Rows.Reload();
        m_ShowsState = false;
    }

    void SyncSelection() override {
        QItemSelection selection;
        for (int row = 0; row < m_Rows.rowCount(); ++row) {
            if (!IsSelectedInControl(row)) continue;
            int last = row;
            while (last + 1 < m_Rows.rowCount() && IsSelectedInControl(last + 1)) ++last;
            selection.select(m_Rows.index(row, 0), m_Rows.index(last, m_Rows.columnCount() - 1));
            row = last;
        }
        if (selection == m_View.selectionModel()->selection()) return;
        m_ShowsState = true;
        m_View.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        if (!selection.isEmpty()) Reveal(selection.first().topLeft());
        m_ShowsState = false;
    }

protected:
    virtual bool IsSelectedInControl(int row) const = 0;
    virtual void SelectInControl(const std::vector<int>& rows) = 0;

private:
    std::vector<int> SelectedRows() const {
        std::vector<int> rows;
        for (const QModelIndex& index : m_View.selectionModel()->selectedRows()) {
            rows.push_back(index.row());
        }
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    // The keyboard goes on from the row that the program selected.
    void Reveal(const QModelIndex& index) {
        m_View.selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        m_View.scrollTo(index);
    }

    QAbstractItemView& m_View;
    ListRows& m_Rows;
    bool m_ShowsState = false;
};

class ListBoxPeer : public RowsPeer {
public:
    ListBoxPeer(CListBox& list, QListView& view, ListRows& rows, Acted acted)
        : RowsPeer(list, view, rows, std::move(acted)), m_List(list) {
        view.setSelectionMode(list.m_MultiSelect ? QAbstractItemView::ExtendedSelection
                                                 : QAbstractItemView::SingleSelection);
        view.setUniformItemSizes(true);
        connect(&view, &QAbstractItemView::doubleClicked, this,
                [this] { Act([this] { NotifyParent(m_List, LBN_DBLCLK); }); });
    }

private:
    bool IsSelectedInControl(int row) const override { return m_List.GetSel(row); }

    // All that differ but the last change quietly, so that the choice is told once.
    void SelectInControl(const std::vector<int>& rows) override {
        if (!m_List.m_MultiSelect) {
            if (!rows.empty()) m_List.Select(rows.front());
            return;
        }
        int last = LB_ERR;
        for (int row = 0; row < m_List.GetCount(); ++row) {
            const bool on = std::binary_search(rows.begin(), rows.end(), row);
            if (m_List.GetSel(row) == on) continue;
            if (last != LB_ERR) m_List.SetSel(last, !m_List.GetSel(last));
            last = row;
        }
        if (last != LB_ERR) m_List.Select(last, true);
    }

    CListBox& m_List;
};

class ListControlPeer : public RowsPeer {
public:
    ListControlPeer(CListCtrl& list, QTreeView& view, ListRows& rows, Acted acted)
        : RowsPeer(list, view, rows, std::move(acted)), m_List(list), m_View(view) {
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setRootIsDecorated(false);
        view.setUniformRowHeights(true);
        view.setAllColumnsShowFocus(true);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress &&
            static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
            Act([this] { m_List.OnKeyDown(VK_DELETE, 1, 0); });
            return true;
        }
        return RowsPeer::eventFilter(watched, event);
    }

    void SyncContent() override {
        RowsPeer::SyncContent();
        const auto columns = static_cast<int>(m_List.Columns().size());
        for (int column = 0; column < columns; ++column) {
            const int width = m_List.GetColumnWidth(column);
            if (width >= 0) {
                m_View.setColumnWidth(column, width);
            } else {
                m_View.resizeColumnToContents(column);
            }
        }
    }

private:
    bool IsSelectedInControl(int row) const override { return m_List.IsSelected(row); }
    void SelectInControl(const std::vector<int>& rows) override { m_List.Select(rows); }

    CListCtrl& m_List;
    QTreeView& m_View;
};

class OwnerDrawnPeer : public ControlPeer {
public:
    OwnerDrawnPeer(CListBox& list, OwnerDrawnList& widget, Acted acted)
        : ControlPeer(list, widget, std::move(acted)), m_List(list), m_Widget(widget) {
        widget.m_OnPress = [this](unsigned flags, CPoint point) {
            Act([&] { m_List.OnLButtonDown(flags, point); });
        };
        widget.m_OnSelect = [this](int index) { Act([&] { m_List.Select(index); }); };
        widget.m_OnKey = [this](unsigned key) { Act([&] { m_List.OnKeyDown(key, 1, 0); }); };
    }
    void Invalidated(const CRect&) override { m_Widget.viewport()->update(); }
    void SyncContent() override { m_Widget.Refresh(); }
    void SyncSelection() override { m_Widget.Refresh(); }

private:
    CListBox& m_List;
    OwnerDrawnList& m_Widget;
};

std::unique_ptr<ControlPeer> MakeListBox(CListBox& list, QWidget& parent,
                                         ControlPeer::Acted acted) {
    if (list.m_OwnerDrawn) {
        return std::make_unique<OwnerDrawnPeer>(list, *new OwnerDrawnList(parent, list),
                                                std::move(acted));
    }
    auto* view = new QListView(&parent);
    const auto text = [&list](int row, int) {
        CString line;
        list.GetText(row, line);
        return ToQt(line);
    };
    auto* rows = new ListRows(*view, {[&list] { return list.GetCount(); }, text, nullptr});
    return std::make_unique<ListBoxPeer>(list, *view, *rows, std::move(acted));
}

std::unique_ptr<ControlPeer> MakeListControl(CListCtrl& list, QWidget& parent,
                                             ControlPeer::Acted acted) {
    auto* view = new QTreeView(&parent);
    const auto headings = [&list] {
        QStringList texts;
        for (const CString& heading : list.Columns()) texts.push_back(ToQt(heading));
        return texts;
    };
    auto* rows = new ListRows(
        *view,
        {[&list] { return list.GetItemCount(); },
         [&list](int row, int column) { return ToQt(list.GetItemText(row, column)); }, headings});
    return std::make_unique<ListControlPeer>(list, *view, *rows, std::move(acted));
}

}  // namespace

std::unique_ptr<ControlPeer> MakeListPeer(const CDialog::Control& control, QWidget& parent,
                                          ControlPeer::Acted acted) {
    if (control.m_Template->m_Kind == ControlKind::ListBox) {
        return MakeListBox(dynamic_cast<CListBox&>(*control.m_Window), parent, std::move(acted));
    }
    return MakeListControl(dynamic_cast<CListCtrl&>(*control.m_Window), parent, std::move(acted));
}

}  // namespace vesk

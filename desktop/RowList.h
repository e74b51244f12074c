#pragma once

#include <QAbstractScrollArea>
#include <functional>
#include <vector>

class QHeaderView;
class QHelpEvent;

namespace vesk {

// Rows in columns, of which none is kept: texts are asked for as they come into sight, so that ten
// million rows cost what a screen full of them does. One row can be the current one.
class RowList : public QAbstractScrollArea {
public:
    struct Column {
        QString m_Title;
        QString m_Widest;  // the column is as wide as this; empty: it takes the room that is left
        bool m_IsNumber = true;
    };
    using Text = std::function<QString(int row, int column)>;

    explicit RowList(const std::vector<Column>&, QWidget* parent = nullptr);

    // Shows other rows; none is the current one.
    void SetRows(int count, Text text);
    // What stands in place of rows while there are none.
    void SetNote(const QString& note);

    int Count() const { return m_Count; }
    QString TextOf(int row, int column) const { return m_Text(row, column); }

    // Makes a row the current one and brings it into sight; -1: none.
    void SetCurrent(int row);
    int Current() const { return m_Current; }
    QRect RowRect(int row) const;  // in the viewport
    QSize sizeHint() const override;

    std::function<void(int row)> m_OnChosen;  // by a click or Enter
    std::function<void(int row)> m_OnDelete;  // by Delete

protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    bool viewportEvent(QEvent*) override;
    void changeEvent(QEvent*) override;
    void focusInEvent(QFocusEvent*) override;
    void focusOutEvent(QFocusEvent*) override;

private:
    void MakeHeader(const std::vector<Column>&);
    void Arrange();
    void PaintRow(QPainter&, int row) const;
    QRect CellRect(int row, int column) const;
    int RowHeight() const;
    int FullRows() const;
    int RowAt(int y) const;  // -1: none
    void ShowTip(const QHelpEvent&);

    QHeaderView* m_Header;
    std::vector<bool> m_IsNumber;
    Text m_Text;
    int m_Count = 0;
    int m_Current = -1;
    QString m_Note;
};

}  // namespace vesk

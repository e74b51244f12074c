#pragma once

#include <QDialog>
#include <vector>

#include "platform/CDialog.h"

class QButtonGroup;
class QGridLayout;

namespace vesk {

class ControlPeer;

// The real window of a dialog that is being run: a grid of widgets made from the dialog's
// controls, which show the controls' state. It closes once the dialog has ended. Borrows the
// dialog, and takes its peers back when it goes.
class DialogWindow : public QDialog {
public:
    DialogWindow(CDialog& dialog, QWidget* parent);
    ~DialogWindow() override;

    CDialog& Dialog() const { return m_Dialog; }
    // The widget of a control, or null.
    QWidget* WidgetOf(int id) const;

    void reject() override;  // Escape and the close box

protected:
    void keyPressEvent(QKeyEvent*) override;

private:
    void AddControls();
    void AddToGrid(const ControlTemplate&, QWidget& widget);
    void StretchColumns(int group);
    QGridLayout& GridOf(int group);
    void JoinChoice(const ControlTemplate&, QWidget& widget);
    void ChooseDefaultButton();
    void NameNeighbours();
    void OrderTabs();
    void FocusFirst();
    void SizeToContents();
    void AfterAction();

    CDialog& m_Dialog;
    std::vector<ControlPeer*> m_Peers;  // one per control, in their order
    QButtonGroup* m_Choice = nullptr;   // the radio buttons that exclude each other
};

}  // namespace vesk

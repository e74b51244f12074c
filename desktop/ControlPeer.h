#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "platform/CWnd.h"
#include "platform/WindowPeer.h"

namespace vesk {

// Shows the state of one control in a widget and brings the user's actions to the control. The
// control decides what an action does: the widget always ends up showing the control's state.
// The widget belongs to its dialog's window; the peer to the control.
class ControlPeer : public QObject, public WindowPeer {
public:
    // `acted` runs after every action of the user.
    using Acted = std::function<void()>;
    ControlPeer(CWnd& window, QWidget& widget, Acted acted);

    void Changed(Aspect) override;
    void Invalidated(const CRect&) override { Widget().update(); }
    CPoint ScreenOrigin() const override;

    QWidget& Widget() const { return m_Widget; }

    // Shows everything anew.
    void Sync();
    // Shows what changed in the items since the last time. They change one by one, thousands in a
    // row, so this waits until the control's work is done.
    void Flush();

    // The widget's focus becomes the control's.
    bool eventFilter(QObject*, QEvent*) override;

protected:
    virtual void SyncText() {}
    virtual void SyncContent() {}
    virtual void SyncSelection() {}
    virtual void SyncTextSelection() {}

    // Hands an action of the user on, then shows what became of it.
    void Act(const std::function<void()>& action);

private:
    void Postpone();

    CWnd& m_Window;
    QWidget& m_Widget;
    Acted m_Acted;
    bool m_ContentIsStale = false;
    bool m_SelectionIsStale = false;
    bool m_FlushIsDue = false;
};

}  // namespace vesk

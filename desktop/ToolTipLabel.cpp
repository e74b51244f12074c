#include "desktop/ToolTipLabel.h"

#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QToolTip>
#include <algorithm>

#include "desktop/InputTranslation.h"
#include "desktop/QtText.h"
#include "platform/CToolTipCtrl.h"

namespace vesk {

namespace {

class ToolTipLabel : public WindowPeer {
public:
    explicit ToolTipLabel(CToolTipCtrl& tip) : m_Tip(tip), m_Label(nullptr, Qt::ToolTip) {
        m_Label.setObjectName("tip");
        m_Label.setTextFormat(Qt::PlainText);
        m_Label.setAttribute(Qt::WA_ShowWithoutActivating);
        m_Label.setAttribute(Qt::WA_TransparentForMouseEvents);
        m_Label.setPalette(QToolTip::palette());
        m_Label.setFrameStyle(QFrame::Box | QFrame::Plain);
        m_Label.setMargin(2);
        ShowText();
    }

    void Changed(Aspect aspect) override {
        if (aspect == Aspect::Text) ShowText();
        if (aspect == Aspect::Text || aspect == Aspect::Position) Place();
        if (aspect == Aspect::Visible) {
            Place();
            m_Label.setVisible(m_Tip.IsWindowVisible());
        }
    }
    CPoint ScreenOrigin() const override { return PixelOf(m_Label.pos()); }

private:
    void ShowText() {
        m_Label.setText(ToQt(m_Tip.GetWindowText()).remove('\r'));
        m_Label.adjustSize();
    }

    // At its point, unless it would leave the screen there.
    void Place() {
        const CPoint at = m_Tip.Position();
        QPoint place(at.x, at.y);
        const QScreen* screen = QGuiApplication::screenAt(place);
        if (screen) {
            const QRect area = screen->geometry();
            place.setX(
                std::max(area.left(), std::min(place.x(), area.right() + 1 - m_Label.width())));
            place.setY(
                std::max(area.top(), std::min(place.y(), area.bottom() + 1 - m_Label.height())));
        }
        m_Label.move(place);
    }

    CToolTipCtrl& m_Tip;
    QLabel m_Label;
};

}  // namespace

std::unique_ptr<WindowPeer> MakeToolTipLabel(CToolTipCtrl& tip) {
    return std::make_unique<ToolTipLabel>(tip);
}

}  // namespace vesk

#include "tests/platform/Scene.h"

#include <array>
#include <random>
#include <string>

#include "platform/CBrush.h"
#include "platform/CDC.h"
#include "platform/CPen.h"

namespace vesk {

namespace {

class Artist {
public:
    Artist(CDC& dc, unsigned seed) : m_Dc(dc), m_Random(seed) {}

    void Draw() {
        CPen pen(std::array{PS_SOLID, PS_SOLID, PS_DOT, PS_NULL}[Below(4)], 1 + Below(3), Color());
        CBrush brush(Color());
        brush.m_Hollow = Below(3) == 0;
        CPen* formerPen = m_Dc.SelectObject(&pen);
        CBrush* formerBrush = m_Dc.SelectObject(&brush);
        DrawOne(Below(7));
        m_Dc.SelectObject(formerPen);
        m_Dc.SelectObject(formerBrush);
    }

private:
    int Below(int limit) { return static_cast<int>(m_Random() % static_cast<unsigned>(limit)); }
    CPoint Place() { return {Below(180) - 30, Below(150) - 30}; }
    COLORREF Color() { return RGB(Below(256), Below(256), Below(256)); }

    CRect Area() {
        const CPoint corner = Place();
        return {corner.x, corner.y, corner.x + Below(60), corner.y + Below(40)};
    }

    void DrawOne(int kind) {
        const CRect area = Area();
        const CPoint end = Place();
        const CPoint corners[] = {Place(), Place(), Place(), Place(), Place()};
        m_Dc.MoveTo(area.left, area.top);
        switch (kind) {
            case 0:
                return m_Dc.FillSolidRect(area, Color());
            case 1:
                return m_Dc.LineTo(end.x, end.y);
            case 2:
                return m_Dc.LineTo(end.x, area.top);
            case 3:
                return m_Dc.LineTo(area.left, end.y);
            case 4:
                return m_Dc.Polygon(corners, 3 + Below(3));
            case 5:
                return DrawBox(area);
            default:
                return DrawText(area.TopLeft());
        }
    }

    void DrawBox(const CRect& area) {
        if (Below(2) == 0) return m_Dc.Rectangle(area.left, area.top, area.right, area.bottom);
        m_Dc.RoundRect(area, {Below(30), Below(30)});
    }

    void DrawText(CPoint at) {
        m_Dc.SetBkMode(Below(2) == 0 ? OPAQUE : TRANSPARENT);
        m_Dc.SetBkColor(Color());
        m_Dc.SetTextColor(Color());
        m_Dc.TextOut(at.x, at.y, std::string("Task_") + std::to_string(Below(100000)));
    }

    CDC& m_Dc;
    std::mt19937 m_Random;
};

}  // namespace

void DrawScene(CDC& dc, unsigned seed) {
    Artist artist(dc, seed);
    for (int i = 0; i < 80; ++i) artist.Draw();
}

}  // namespace vesk

#pragma once

#include <string>
#include <vector>

#include "platform/Surface.h"

namespace vesk {

// Writes down what is drawn, one line of text per call, for tests to read:
//     fill 0,0 100x20 FFFFFF
//     line 10,5 > 20,5 solid 1 000000
//     polygon 10,5 > 5,15 > 15,15 solid 1 000000 on FFFFFF
//     rect 0,0 20x10 dot 1 0000FF on hollow
//     roundrect 0,0 20x10 by 4x4 none on FFD6AE
//     text 12,3 "MAIN" 000000
// Colours are 0x00BBGGRR in hexadecimal. Points are those of the surface; nothing is cut. A pen is
// style, width, colour, or "none"; what stands after "on" is the brush, which may be "hollow". Text
// is measured in the fixed font. What is copied from another recording appears here at its new
// place: all that was drawn there so far.
class RecordingSurface : public Surface {
public:
    explicit RecordingSurface(CSize size) : m_Size(size) {}

    CSize Size() const override { return m_Size; }
    void SetClip(const CRect&) override {}
    void FillRect(const CRect&, COLORREF) override;
    void Line(CPoint from, CPoint to, const CPen&) override;
    void Polygon(std::span<const CPoint> corners, const CPen&, const CBrush&) override;
    void RoundRect(const CRect&, CSize corner, const CPen&, const CBrush&) override;
    void Rectangle(const CRect&, const CPen&, const CBrush&) override;
    void Text(CPoint, std::string_view, COLORREF) override;
    CSize MeasureText(std::string_view) const override;
    const GlyphSource& Glyphs() const override;
    std::unique_ptr<Surface> MakeCompatible(CSize) const override;
    void Copy(const CRect& target, const Surface& source, CPoint sourceTopLeft) override;

    std::vector<std::string> Lines() const;
    // The texts drawn, in order.
    std::vector<std::string> Texts() const;

private:
    // One drawing call, kept in parts so that a copy can move it.
    struct Call {
        std::string m_Verb;
        std::vector<CPoint> m_Points;
        std::string m_Rest;
        std::string m_Text = {};  // of the verb "text"
    };
    CSize m_Size;
    std::vector<Call> m_Calls;
};

}  // namespace vesk

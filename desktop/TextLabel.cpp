#include "desktop/TextLabel.h"

#include <QFontMetrics>

namespace vesk {

namespace {

constexpr int kLineInCharacters = 64;
constexpr int kMostInCharacters = 90;  // of a text in one line

}  // namespace

TextLabel::TextLabel(QWidget& parent, bool wraps) : QLabel(&parent), m_Wraps(wraps) {
    setTextFormat(Qt::PlainText);
    setWordWrap(wraps);
    if (wraps) setMinimumWidth(fontMetrics().averageCharWidth() * kLineInCharacters);
}

void TextLabel::SetText(const QString& text) {
    m_FullText = text;
    const int line = fontMetrics().averageCharWidth() * kMostInCharacters;
    const bool isLong =
        !m_Wraps && !text.contains('\n') && fontMetrics().horizontalAdvance(text) > line;
    setText(isLong ? fontMetrics().elidedText(text, Qt::ElideMiddle, line) : text);
    setToolTip(isLong ? text.toHtmlEscaped() : QString());
}

}  // namespace vesk

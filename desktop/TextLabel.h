#pragma once

#include <QLabel>

namespace vesk {

// A dialog's plain text, which never makes its dialog wider than a fair line: longer text, such as
// a path, is broken at spaces and slashes if it may wrap; otherwise its middle gives way to an
// ellipsis, and a tip shows all of it.
class TextLabel : public QLabel {
public:
    TextLabel(QWidget& parent, bool wraps);
    void SetText(const QString&);  // all of it; text() is what is shown

    const QString& FullText() const { return m_FullText; }

private:
    bool m_Wraps;
    QString m_FullText;
};

}  // namespace vesk

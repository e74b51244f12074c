#include "desktop/QtText.h"

#include <QStringDecoder>

namespace vesk {

QString ToQt(const std::string& text) {
    const auto size = static_cast<qsizetype>(text.size());
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString decoded = decoder.decode(QByteArrayView(text.data(), size));
    return decoder.hasError() ? QString::fromLatin1(text.data(), size) : decoded;
}

QString ToQt(const CString& text) {
    return ToQt(text.Str());
}

CString FromQt(const QString& text) {
    return text.toStdString();
}

QString TipOf(const CString& commandString) {
    const QString text = ToQt(commandString);
    const qsizetype tip = text.indexOf('\n');
    return tip < 0 ? text.section('\t', 0, 0).remove('&') : text.mid(tip + 1);
}

}  // namespace vesk

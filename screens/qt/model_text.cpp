#include "screens/qt/model_text.h"

#include <QStringDecoder>

namespace zentrel::view {

QString FromModel(std::string_view text) {
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString result = utf8.decode(bytes);
    if (utf8.hasError()) return QString::fromLatin1(bytes);
    return result;
}

QString Literal(std::string_view text) {
    return FromModel(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

QString TipText(std::string_view text) {
    if (text.empty()) return {};
    QString lines = FromModel(text).toHtmlEscaped();
    if (const auto first = lines.indexOf(QLatin1Char('\n')); first > 0)
        lines =
            QStringLiteral("<b>") + lines.left(first) + QStringLiteral("</b>") + lines.mid(first);
    return QStringLiteral("<qt>") + lines.replace(QLatin1Char('\n'), QLatin1String("<br>")) +
           QStringLiteral("</qt>");
}

QString IndexedName(const char* name, std::size_t index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

} // namespace zentrel::view

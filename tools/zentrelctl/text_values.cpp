#include "tools/zentrelctl/text_values.h"

#include <cmath>
#include <limits>

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QMap>
#include <QStringList>

#include "device/number_text.h"

namespace zentrel::ctl {

namespace {

template<typename Integer>
std::optional<QVariant> Whole(double number) {
    if (number != std::trunc(number) || number < std::numeric_limits<Integer>::min() ||
        number > std::numeric_limits<Integer>::max()) {
        return {};
    }
    return QVariant::fromValue(static_cast<Integer>(number));
}

std::optional<QVariant> List(const QString& word, const QString& element) {
    QList<double> numbers;
    const QStringList words = word.isEmpty() ? QStringList() : word.split(QLatin1Char(','));
    if (element == QLatin1String("s")) return words;
    for (const QString& one : words) {
        const auto number = ParseFileNumber(one.toStdString());
        if (!number) return {};
        numbers << *number;
    }
    return QVariant::fromValue(numbers);
}

std::optional<QVariant> Anything(const QString& word, bool quoted) {
    const auto wrap = [](const QVariant& value) {
        return QVariant::fromValue(QDBusVariant(value));
    };
    if (quoted) return wrap(word);
    if (const auto number = ParseFileNumber(word.toStdString())) return wrap(*number);
    if (word.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0) return wrap(true);
    if (word.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0) return wrap(false);
    return wrap(word);
}

} // namespace

std::optional<QVariant> ValueFromWord(const QString& word, const QString& signature, bool quoted) {
    if (signature == QLatin1String("s")) return QVariant(word);
    if (signature == QLatin1String("v")) return Anything(word, quoted);
    if (signature == QLatin1String("o")) return QVariant::fromValue(QDBusObjectPath(word));
    if (signature.startsWith(QLatin1Char('a'))) return List(word, signature.mid(1));
    if (signature == QLatin1String("b")) {
        const auto truth = ParseFileBool(word.toStdString());
        return truth ? std::optional<QVariant>(*truth) : std::nullopt;
    }
    const auto number = ParseFileNumber(word.toStdString());
    if (!number) return {};
    if (signature == QLatin1String("d")) return QVariant(*number);
    if (signature == QLatin1String("n")) return Whole<short>(*number);
    if (signature == QLatin1String("i")) return Whole<int>(*number);
    return {};
}

QVariant Unwrapped(const QVariant& value) {
    if (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        return Unwrapped(qvariant_cast<QDBusVariant>(value).variant());
    }
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return qvariant_cast<QDBusObjectPath>(value).path();
    }
    if (value.metaType() != QMetaType::fromType<QDBusArgument>()) return value;
    const auto stream = qvariant_cast<QDBusArgument>(value);
    if (stream.currentType() == QDBusArgument::ArrayType) {
        QVariantList list;
        stream.beginArray();
        while (!stream.atEnd())
            list << Unwrapped(stream.asVariant());
        stream.endArray();
        return list;
    }
    if (stream.currentType() == QDBusArgument::MapType) {
        QVariantMap plain;
        const auto map = qdbus_cast<QVariantMap>(stream);
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            plain.insert(entry.key(), Unwrapped(entry.value()));
        return plain;
    }
    return value;
}

QString WordFromValue(const QVariant& given) {
    const QVariant value = Unwrapped(given);
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double:
        return QString::fromStdString(NumberToText(value.toDouble()));
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        QStringList words;
        for (const QVariant& one : value.toList())
            words << WordFromValue(one);
        return words.join(QLatin1Char('\n'));
    }
    case QMetaType::QVariantMap: {
        QStringList lines;
        const QVariantMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            lines << entry.key() + QLatin1String(" = ") + WordFromValue(entry.value());
        return lines.join(QLatin1Char('\n'));
    }
    default:
        return value.toString();
    }
}

} // namespace zentrel::ctl

#include "tools/zentrelctl/json.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "tools/zentrelctl/text_values.h"

namespace zentrel::ctl {

namespace {

QJsonValue Element(const QVariant& given) {
    const QVariant value = Unwrapped(given);
    if (value.typeId() == QMetaType::QVariantMap) {
        QJsonObject object;
        const QVariantMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry)
            object.insert(entry.key(), Element(entry.value()));
        return object;
    }
    if (value.typeId() == QMetaType::QVariantList || value.typeId() == QMetaType::QStringList) {
        QJsonArray array;
        for (const QVariant& one : value.toList())
            array.append(Element(one));
        return array;
    }
    if (value.typeId() == QMetaType::Short) return value.toInt();
    return QJsonValue::fromVariant(value);
}

} // namespace

QString JsonOf(const QVariant& value) {
    // A document holds arrays and objects alone, so a plain value borrows an array's brackets.
    const QByteArray text =
        QJsonDocument(QJsonArray{Element(value)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(text.mid(1, text.size() - 2));
}

} // namespace zentrel::ctl

#pragma once

#include <optional>

#include <QString>
#include <QVariant>

namespace zentrel::ctl {

/// A word of the command line as a value of a bus type ("d", "n", "b", "v"...), nothing when it
/// isn't one. Numbers as in part files: decimal with a point, or "&H" with hexadecimal digits. For
/// "v" a number counts as a number, "True" and "False" as truth values, all else as text; `quoted`
/// makes it a text. An array is comma-separated.
std::optional<QVariant> ValueFromWord(const QString& word, const QString& signature,
                                      bool quoted = false);

/// A value as a person reads it. Numbers have at most 15 digits and a point.
QString WordFromValue(const QVariant& value);

/// A value without the wrapping of the bus.
QVariant Unwrapped(const QVariant& value);

} // namespace zentrel::ctl

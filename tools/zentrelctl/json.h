#pragma once

#include <QString>
#include <QVariant>

namespace zentrel::ctl {

/// A value from the bus as JSON on one line.
QString JsonOf(const QVariant& value);

} // namespace zentrel::ctl

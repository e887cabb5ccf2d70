#include "screens/qt/bit_grid.h"

#include <algorithm>

#include <QFontMetrics>

#include "screens/qt/metrics.h"

namespace zentrel::view {

int BitGrid::CellWidth() {
    return QFontMetrics(MonospacedFont()).horizontalAdvance(QLatin1Char('0')) +
           Metrics::Now().half + 1;
}

int BitGrid::Hair() {
    return Metrics::Now().half;
}

int BitGrid::Padding() {
    return Metrics::Now().half + 1;
}

int BitGrid::Left(int column) const {
    // Whole groups to the left of the column; with the highest bit first the odd ones lead.
    const int leading = lsbFirst ? 0 : (4 - bits % 4) % 4;
    return Padding() + column * CellWidth() + (column + leading) / 4 * Hair();
}

int BitGrid::ColumnAt(int x) const {
    int column = std::clamp(x / (CellWidth() + 1), 0, std::max(bits - 1, 0));
    while (column + 1 < bits && Left(column + 1) <= x)
        ++column;
    while (column > 0 && Left(column) > x)
        --column;
    return column;
}

} // namespace zentrel::view

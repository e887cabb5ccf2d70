#include "screens/qt/metrics.h"

#include <algorithm>

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetrics>

namespace zentrel::view {

namespace {

Metrics Measure(const QFont& font) {
    const QFontMetrics text(font);
    Metrics m{};
    m.textHeight = text.height();
    m.unit = std::max(6, (m.textHeight * 11 + 10) / 20);
    m.half = m.unit / 2;
    m.boxHeight = m.textHeight + m.unit + m.half / 2;
    m.rowHeight = m.textHeight + m.unit;
    m.radius = std::max(3, m.unit / 2);
    return m;
}

double PointSize() {
    return QFontInfo(QApplication::font()).pointSizeF();
}

} // namespace

const Metrics& Metrics::Now() {
    static QFont font = QApplication::font();
    static Metrics metrics = Measure(font);
    if (font != QApplication::font()) {
        font = QApplication::font();
        metrics = Measure(font);
    }
    return metrics;
}

int Metrics::DigitsWidth(int digits) const {
    return QFontMetrics(QApplication::font()).horizontalAdvance('0') * digits + 3 * unit;
}

QFont MonospacedFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(PointSize());
    font.setStyleHint(QFont::Monospace);
    return font;
}

QFont UiFont(double steps, bool bold) {
    QFont font = QApplication::font();
    font.setPointSizeF(std::max(5.0, PointSize() + steps));
    font.setBold(bold);
    return font;
}

} // namespace zentrel::view

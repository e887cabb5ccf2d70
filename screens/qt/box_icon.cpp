#include "screens/qt/box_icon.h"

#include <QPainter>
#include <QPixmap>

#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

constexpr int kSide = 48; // logical pixels; boxes draw it at whatever size they have
constexpr int kDensest = 3;
constexpr qreal kStroke = 4;

struct Mark {
    QColor disc;
    QColor ink;
    QChar sign; ///< Null for a cross.
};

void PaintMark(QPainter& painter, const Mark& mark) {
    const QRectF disc = QRectF(0, 0, kSide, kSide).adjusted(4, 4, -4, -4);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mark.disc);
    painter.drawEllipse(disc);
    if (mark.sign.isNull()) {
        painter.setPen(QPen(mark.ink, kStroke, Qt::SolidLine, Qt::RoundCap));
        const QRectF cross = disc.adjusted(12, 12, -12, -12);
        painter.drawLine(cross.topLeft(), cross.bottomRight());
        painter.drawLine(cross.bottomLeft(), cross.topRight());
        return;
    }
    QFont font;
    font.setPixelSize(kSide * 11 / 20); // of the drawing, not of the screen
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(mark.ink);
    painter.drawText(disc, Qt::AlignCenter, mark.sign);
}

QIcon IconOf(const Mark& mark) {
    QIcon icon;
    for (int density = 1; density <= kDensest; ++density) {
        QPixmap pixmap(kSide * density, kSide * density);
        pixmap.setDevicePixelRatio(density);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        PaintMark(painter, mark);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace

QIcon BoxIcon(QStyle::StandardPixmap picture) {
    const Theme& theme = Theme::Now();
    switch (picture) {
    case QStyle::SP_MessageBoxInformation:
        return IconOf({theme.accent, theme.onAccent, QLatin1Char('i')});
    case QStyle::SP_MessageBoxQuestion:
        return IconOf({theme.accent, theme.onAccent, QLatin1Char('?')});
    case QStyle::SP_MessageBoxWarning:
        return IconOf(
            {theme.Fill(colors::kYellow), theme.InkOn(colors::kYellow), QLatin1Char('!')});
    case QStyle::SP_MessageBoxCritical:
        return IconOf({theme.Fill(colors::kRed), theme.InkOn(colors::kRed), QChar()});
    default:
        return {};
    }
}

} // namespace zentrel::view

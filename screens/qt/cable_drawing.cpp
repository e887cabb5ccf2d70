#include "screens/qt/cable_drawing.h"

#include <array>

#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include "screens/port_screen.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/paint.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

// Places in grid steps. One lane for each header pin, and the same pitch on the connector, so that
// most wires run straight.
constexpr double kPitch = 2.25;
constexpr double kHeaderLeft = 3.0;            // centre of the odd pins
constexpr double kHeaderRight = 7.0;           // centre of the even pins
constexpr double kFirstLane = 9.0;             // lane of header pin 1
constexpr double kDbLeft = 32.0;               // centre of the pins 1 to 13
constexpr double kDbRight = 35.5;              // centre of the pins 14 to 25
constexpr double kDbTop = kFirstLane - kPitch; // DB-25 pin 1, so that pin 2 faces lane 1
constexpr double kDbBottom = kDbTop + 12 * kPitch;
constexpr double kChannel = 12.0; // the first vertical track between the two
constexpr double kTrack = 1.5;
constexpr double kWidth = 50.0;
constexpr double kLegendTop = kDbBottom + 13.0;
constexpr double kLegendRow = 2.75;
constexpr int kFirstRoundabout = 9; // header pins from here on reach the connector from behind

double U(double units) {
    return units * Metrics::Now().unit;
}
QPointF P(double x, double y) {
    return {U(x), U(y)};
}

double Lane(int headerPin) {
    return kFirstLane + (headerPin - 1) * kPitch;
}

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

const char* FunctionOf(Color color) {
    if (color == colors::kUnassigned || color == colors::kWhite) return "nothing assigned";
    if (color == colors::kYellow) return "Input";
    for (const PortScreen::LegendEntry& entry : PortScreen::Legend())
        if (entry.color == color) return entry.text.data();
    return "";
}

// Before a device is loaded, nothing has a function yet.
Color Shown(Color color) {
    return color == colors::kWhite ? colors::kUnassigned : color;
}

/// A letter in the pin of each function, so that the colour isn't the only sign.
QString LetterOf(Color color) {
    switch (color) {
    case colors::kCyan:
        return QStringLiteral("C");
    case colors::kGreen:
        return QStringLiteral("D");
    case colors::kMagenta:
        return QStringLiteral("L");
    case colors::kBlue:
        return QStringLiteral("P");
    case colors::kYellow:
        return QStringLiteral("I");
    case colors::kRed:
        return QStringLiteral("!");
    case colors::kBlack:
        return QStringLiteral("G");
    default:
        return {};
    }
}

} // namespace

CableDrawing::CableDrawing(const PortScreen& model, QWidget* parent)
    : QWidget(parent), model_(model) {
    setAccessibleName(tr("Cable between the board's header and the DB-25 connector"));
}

QSize CableDrawing::sizeHint() const {
    return {static_cast<int>(U(kWidth)), static_cast<int>(U(kLegendTop + 4 * kLegendRow))};
}

std::vector<Color> CableDrawing::State() const {
    std::vector<Color> state;
    for (int i = 1; i <= PortScreen::kHeaderPins; ++i) {
        state.push_back(model_.Pinheader[At(i)].BackColor);
        state.push_back(model_.wires[At(i)].BorderColor +
                        (model_.wires[At(i)].Visible ? 1U << 30 : 0));
    }
    for (int i = 1; i <= PortScreen::kDbPins; ++i)
        state.push_back(model_.DB1[At(i)].BackColor);
    state.push_back(model_.DBConn.Visible);
    state.push_back(model_.Label11.Visible);
    return state;
}

void CableDrawing::Sync() {
    std::vector<Color> now = State();
    if (now == state_) return;
    state_ = std::move(now);
    update();
}

QPointF CableDrawing::HeaderPin(int pin) const {
    const int row = (pin - 1) / 2;
    const bool odd = pin % 2 == 1;
    return P(odd ? kHeaderLeft : kHeaderRight, Lane(2 * row + 2));
}

QPointF CableDrawing::DbPin(int pin) const {
    if (pin <= 13) return P(kDbLeft, kDbTop + (pin - 1) * kPitch);
    return P(kDbRight, kDbTop + (pin - 14 + 0.5) * kPitch);
}

std::vector<QPointF> CableDrawing::Wire(int pin) const {
    const QPointF from = HeaderPin(pin);
    const QPointF to = DbPin(PortScreen::DbPinOf(pin));
    const double lane = U(Lane(pin));
    std::vector<QPointF> wire{from};
    if (pin % 2 == 1) { // Out of the left row, between the pins of the right one.
        wire.emplace_back(from.x(), lane);
    }
    const int tail = pin - kFirstRoundabout;
    if (tail < 0) {
        // Pins 3 and 4 change places; all others run straight.
        const double x = U(kChannel + (pin == 3 ? 3 * kTrack : 2 * kTrack));
        wire.emplace_back(x, lane);
        wire.emplace_back(x, to.y());
        wire.push_back(to);
        return wire;
    }
    const double down = U(kChannel + (5 - tail) * kTrack);
    const double under = U(kDbBottom + 3.5 + tail * kTrack);
    const double up = U(kDbRight + 3.5 + tail * kTrack);
    wire.emplace_back(down, lane);
    wire.emplace_back(down, under);
    wire.emplace_back(up, under);
    if (PortScreen::DbPinOf(pin) <= 13) { // Over the top, and in from the left.
        const double over = to.y() - U(2.5);
        const double in = U(kDbLeft - 4.0);
        wire.emplace_back(up, over);
        wire.emplace_back(in, over);
        wire.emplace_back(in, to.y());
    } else {
        wire.emplace_back(up, to.y());
    }
    wire.push_back(to);
    return wire;
}

void CableDrawing::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (model_.DBConn.Visible) {
        PaintConnector(painter);
        PaintWires(painter);
        for (int pin = 1; pin <= PortScreen::kDbPins; ++pin)
            PaintPin(painter, DbPin(pin), model_.DB1[At(pin)], pin, true);
    }
    PaintHeader(painter);
    PaintLegend(painter);
}

void CableDrawing::PaintHeader(QPainter& painter) const {
    const Theme& theme = Theme::Now();
    const QRectF body(P(kHeaderLeft - 2, Lane(2) - 2.75), P(kHeaderRight + 2, Lane(14) + 1.75));
    PaintBox(painter, body, theme.block, theme.line);
    painter.setPen(theme.muted);
    painter.setFont(UiFont());
    painter.drawText(QRectF(P(1, 0), P(27, 2.25)), Qt::AlignLeft | Qt::AlignVCenter,
                     tr("10/14 Pin Connector ( Top View )"));
    painter.drawText(
        QRectF(P(kHeaderLeft - 2, kFirstLane - 3.25), P(kHeaderRight + 3, kFirstLane - 1)),
        Qt::AlignLeft | Qt::AlignVCenter, tr("Pin 1"));
    for (int pin = 1; pin <= PortScreen::kHeaderPins; ++pin)
        PaintPin(painter, HeaderPin(pin), model_.Pinheader[At(pin)], pin, false);
}

void CableDrawing::PaintConnector(QPainter& painter) const {
    const Theme& theme = Theme::Now();
    QPainterPath shell(P(kDbLeft - 2, kDbTop - 2));
    shell.lineTo(P(kDbRight + 2, kDbTop - 0.25));
    shell.lineTo(P(kDbRight + 2, kDbBottom + 0.25));
    shell.lineTo(P(kDbLeft - 2, kDbBottom + 2));
    shell.closeSubpath();
    QPen outline(theme.line, 1.0);
    outline.setJoinStyle(Qt::RoundJoin);
    painter.setPen(outline);
    painter.setBrush(theme.block);
    painter.drawPath(shell);
    painter.setPen(theme.muted);
    painter.drawText(QRectF(P(kDbLeft - 4, 0), P(kWidth, 2.25)), Qt::AlignLeft | Qt::AlignVCenter,
                     FromModel(model_.DBlabel.Caption));
}

void CableDrawing::PaintWires(QPainter& painter) const {
    const Theme& theme = Theme::Now();
    // What carries a signal lies over what doesn't.
    for (const bool assigned : {false, true}) {
        for (int pin = 1; pin <= PortScreen::kHeaderPins; ++pin) {
            const Line& line = model_.wires[At(pin)];
            const bool loaded = model_.Pinheader[At(pin)].BackColor != colors::kWhite;
            const Color color = loaded ? line.BorderColor : colors::kUnassigned;
            const bool used = color != colors::kUnassigned;
            if (!line.Visible || used != assigned) continue;
            QPen pen(used ? theme.Ink(color) : theme.line, used ? 2.0 : 1.5);
            if (color == colors::kBlack) pen.setColor(theme.signal);
            pen.setJoinStyle(Qt::RoundJoin);
            painter.setPen(pen);
            painter.setBrush(Qt::NoBrush);
            const std::vector<QPointF> points = Wire(pin);
            painter.drawPolyline(points.data(), static_cast<int>(points.size()));
        }
    }
}

void CableDrawing::PaintPin(QPainter& painter, const QPointF& at, const Shape& pin, int number,
                            bool round) const {
    const Theme& theme = Theme::Now();
    if (!pin.Visible) return;
    const double r = U(0.85);
    const QRectF box(at.x() - r, at.y() - r, 2 * r, 2 * r);
    const Color color = Shown(pin.BackColor);
    const bool used = color != colors::kUnassigned;
    const QColor fill = used ? theme.Ink(color) : theme.surface;
    painter.setPen(QPen(used ? fill : theme.muted, 1.0));
    if (color == colors::kBlack) painter.setPen(QPen(theme.signal, 1.0));
    painter.setBrush(fill);
    if (round)
        painter.drawEllipse(box);
    else
        painter.drawRoundedRect(box, 2, 2);
    QFont font = UiFont(-2, used);
    painter.setFont(font);
    painter.setPen(!used                    ? theme.muted
                   : fill.lightness() < 140 ? Qt::white
                                            : QColor(0x10, 0x12, 0x16));
    const QString sign = used ? LetterOf(color) : QString::number(number);
    painter.drawText(box, Qt::AlignCenter, sign);
}

void CableDrawing::PaintLegend(QPainter& painter) const {
    const Theme& theme = Theme::Now();
    std::vector<PortScreen::LegendEntry> entries(PortScreen::Legend().begin(),
                                                 PortScreen::Legend().end());
    if (model_.Label11.Visible) entries.push_back({model_.Label11.Caption, colors::kYellow});
    const double top = model_.DBConn.Visible ? kLegendTop : Lane(PortScreen::kHeaderPins) + 4.0;
    painter.setFont(UiFont());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const double x = i % 2 == 0 ? 1.0 : kWidth / 2;
        const std::size_t row = i / 2;
        const double y = top + static_cast<double>(row) * kLegendRow;
        Shape sample;
        sample.BackColor = entries[i].color;
        PaintPin(painter, P(x + 1, y + 1), sample, 0, true);
        painter.setFont(UiFont());
        painter.setPen(theme.text);
        painter.drawText(QRectF(P(x + 3, y - 0.25), P(x + 22, y + 2.25)),
                         Qt::AlignLeft | Qt::AlignVCenter, FromModel(entries[i].text));
    }
}

bool CableDrawing::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const auto near = [&](const QPointF& at) {
        return QLineF(at, QPointF(help->pos())).length() < U(1.25);
    };
    QString tip;
    for (int pin = 1; pin <= PortScreen::kHeaderPins; ++pin)
        if (near(HeaderPin(pin)))
            tip = tr("Header pin %1: %2")
                      .arg(pin)
                      .arg(QLatin1String(FunctionOf(model_.Pinheader[At(pin)].BackColor)));
    for (int pin = 1; model_.DBConn.Visible && pin <= PortScreen::kDbPins; ++pin)
        if (near(DbPin(pin)))
            tip = tr("DB-25 pin %1: %2")
                      .arg(pin)
                      .arg(QLatin1String(FunctionOf(model_.DB1[At(pin)].BackColor)));
    if (tip.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), tip, this);
    return true;
}

} // namespace zentrel::view

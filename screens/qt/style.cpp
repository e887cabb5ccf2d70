#include "screens/qt/style.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QStyleFactory>
#include <QStyleOption>

#include "screens/qt/box_icon.h"
#include "screens/qt/metrics.h"
#include "screens/qt/paint.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

namespace {

bool Has(const QStyleOption& option, QStyle::StateFlag flag) {
    return option.state & flag;
}

void PaintField(const QStyleOption& option, QPainter& painter) {
    const Theme& theme = Theme::Now();
    const bool focus = Has(option, QStyle::State_HasFocus) && Has(option, QStyle::State_Enabled);
    const QColor fill = Has(option, QStyle::State_Enabled)
                            ? option.palette.color(QPalette::Base)
                            : option.palette.color(QPalette::Disabled, QPalette::Window);
    const bool plain = fill == QGuiApplication::palette().color(QPalette::Base);
    PaintBox(painter, option.rect, plain ? theme.field : fill, focus ? theme.accent : theme.line,
             focus ? 2.0 : 1.0);
}

void PaintButton(const QStyleOption& option, QPainter& painter) {
    const Theme& theme = Theme::Now();
    const bool enabled = Has(option, QStyle::State_Enabled);
    QColor fill = option.palette.color(QPalette::Button);
    if (enabled && Has(option, QStyle::State_Sunken))
        fill = theme.dark ? fill.darker(130) : fill.darker(112);
    else if (enabled && Has(option, QStyle::State_MouseOver))
        fill = theme.dark ? fill.lighter(122) : fill.darker(104);
    const bool focus = enabled && Has(option, QStyle::State_HasFocus);
    PaintBox(painter, option.rect, enabled ? fill : QColor(Qt::transparent),
             focus ? theme.accent : theme.line, focus ? 2.0 : 1.0);
}

void PaintTip(const QStyleOption& option, QPainter& painter) {
    painter.fillRect(option.rect, option.palette.color(QPalette::ToolTipBase));
    painter.setPen(Theme::Now().disabled);
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
}

QRectF MarkRect(const QStyleOption& option) {
    const double side = std::min(option.rect.width(), option.rect.height());
    QRectF mark(0, 0, side, side);
    mark.moveCenter(QRectF(option.rect).center());
    return mark.adjusted(0.5, 0.5, -0.5, -0.5);
}

void PaintMark(const QStyleOption& option, QPainter& painter, bool round) {
    const Theme& theme = Theme::Now();
    const bool on = Has(option, QStyle::State_On);
    const bool enabled = Has(option, QStyle::State_Enabled);
    const QColor accent = enabled ? theme.accent : theme.disabled;
    const QRectF mark = MarkRect(option);
    const double side = mark.width();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const bool lit =
        on ||
        (enabled && (Has(option, QStyle::State_MouseOver) || Has(option, QStyle::State_HasFocus)));
    const QColor rest = enabled ? theme.disabled : theme.line;
    painter.setPen(QPen(lit ? accent : rest, lit && !on ? 1.5 : 1.0));
    painter.setBrush(on ? accent : enabled ? theme.field : QColor(Qt::transparent));
    const double radius = round ? side / 2 : side / 5;
    painter.drawRoundedRect(mark, radius, radius);
    if (on && round) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.onAccent);
        painter.drawEllipse(mark.center(), side * 0.2, side * 0.2);
    } else if (on) {
        QPen pen(theme.onAccent, side * 0.13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        QPainterPath tick(QPointF(mark.left() + side * 0.24, mark.top() + side * 0.53));
        tick.lineTo(mark.left() + side * 0.43, mark.top() + side * 0.71);
        tick.lineTo(mark.left() + side * 0.77, mark.top() + side * 0.31);
        painter.drawPath(tick);
    }
    painter.restore();
}

void PaintTab(const QStyleOptionTab& tab, QPainter& painter) {
    const Theme& theme = Theme::Now();
    const Metrics& m = Metrics::Now();
    const bool selected = Has(tab, QStyle::State_Selected);
    const QRect r = tab.rect;
    if (!selected && Has(tab, QStyle::State_MouseOver)) {
        QColor tint = theme.text;
        tint.setAlphaF(0.06F);
        painter.fillRect(r.adjusted(0, m.half / 2, 0, -2), tint);
    }
    painter.fillRect(QRect(r.left(), r.bottom(), r.width(), 1), theme.line);
    if (selected) painter.fillRect(QRect(r.left(), r.bottom() - 2, r.width(), 3), theme.accent);
}

void PaintTabLabel(const QStyleOptionTab& tab, QPainter& painter) {
    const Theme& theme = Theme::Now();
    const bool selected = Has(tab, QStyle::State_Selected);
    painter.save();
    painter.setPen(selected ? theme.text : theme.muted);
    const QRect inner = tab.rect.adjusted(Metrics::Now().unit, 0, -Metrics::Now().unit, 0);
    painter.drawText(inner, Qt::AlignCenter | Qt::TextShowMnemonic | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(tab.text, Qt::ElideRight, inner.width(),
                                                      Qt::TextShowMnemonic));
    if (Has(tab, QStyle::State_HasFocus)) {
        QColor ring = theme.accent;
        painter.setPen(QPen(ring, 1));
        painter.drawRoundedRect(QRectF(tab.rect).adjusted(3.5, 3.5, -3.5, -5.5), 3, 3);
    }
    painter.restore();
}

void PaintScrollBar(const QStyle& style, const QStyleOptionSlider& bar, QPainter& painter,
                    const QWidget* widget) {
    const Theme& theme = Theme::Now();
    painter.fillRect(bar.rect, theme.surface);
    QRectF handle =
        style.subControlRect(QStyle::CC_ScrollBar, &bar, QStyle::SC_ScrollBarSlider, widget);
    handle.adjust(2, 2, -2, -2);
    const bool held = (bar.activeSubControls & QStyle::SC_ScrollBarSlider) != 0;
    QColor color = theme.text;
    color.setAlphaF(held ? 0.5F : 0.28F);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double radius = std::min(handle.width(), handle.height()) / 2;
    painter.drawRoundedRect(handle, radius, radius);
    painter.restore();
}

void PaintHeaderLabel(const QStyleOptionHeader& header, QPainter& painter) {
    const QRect inner = header.rect.adjusted(Metrics::Now().unit - 2, 0, -Metrics::Now().half, 0);
    painter.setPen(Theme::Now().muted);
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(header.text, Qt::ElideRight, inner.width()));
}

void PaintChevron(QPainter& painter, const QRectF& rect, const QColor& color) {
    const double size = Metrics::Now().unit * 0.5;
    const QPointF c = rect.center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF{QPointF(c.x() - size, c.y() - size / 2),
                                   QPointF(c.x(), c.y() + size / 2),
                                   QPointF(c.x() + size, c.y() - size / 2)});
    painter.restore();
}

void PaintComboBox(const QStyleOptionComboBox& combo, QPainter& painter) {
    const Theme& theme = Theme::Now();
    PaintField(combo, painter);
    const int width = Metrics::Now().unit * 3;
    const QRectF arrow(combo.rect.right() - width, combo.rect.top(), width, combo.rect.height());
    PaintChevron(painter, arrow, Has(combo, QStyle::State_Enabled) ? theme.signal : theme.disabled);
}

void PaintComboLabel(const QStyleOptionComboBox& combo, QPainter& painter) {
    const Metrics& m = Metrics::Now();
    const QRect inner = combo.rect.adjusted(m.unit, 0, -3 * m.unit, 0);
    const auto group = Has(combo, QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
    painter.setPen(combo.palette.color(group, QPalette::Text));
    painter.drawText(
        inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        painter.fontMetrics().elidedText(combo.currentText, Qt::ElideRight, inner.width()));
}

} // namespace

FlatStyle::FlatStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void FlatStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
    switch (element) {
    case PE_PanelLineEdit:
        if (const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            frame && frame->lineWidth > 0)
            return PaintField(*option, *painter);
        break;
    case PE_Frame:
        return PaintField(*option, *painter);
    case PE_FrameLineEdit:
    case PE_FrameStatusBarItem:
    case PE_FrameTabBarBase:
    case PE_FrameFocusRect:
    case PE_FrameTabWidget:
        return; // The bricks show the focus on their own frames.
    case PE_PanelScrollAreaCorner:
        painter->fillRect(option->rect, Theme::Now().surface);
        return;
    case PE_PanelButtonCommand:
        return PaintButton(*option, *painter);
    case PE_PanelTipLabel:
        return PaintTip(*option, *painter);
    case PE_IndicatorCheckBox:
        return PaintMark(*option, *painter, false);
    case PE_IndicatorRadioButton:
        return PaintMark(*option, *painter, true);
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void FlatStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    switch (element) {
    case CE_TabBarTabShape:
        if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option))
            return PaintTab(*tab, *painter);
        break;
    case CE_TabBarTabLabel:
        if (const auto* tab = qstyleoption_cast<const QStyleOptionTab*>(option))
            return PaintTabLabel(*tab, *painter);
        break;
    case CE_HeaderSection:
        painter->fillRect(option->rect, Theme::Now().window);
        painter->fillRect(
            QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
            Theme::Now().line);
        return;
    case CE_HeaderLabel:
        if (const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option))
            return PaintHeaderLabel(*header, *painter);
        break;
    case CE_HeaderEmptyArea:
        painter->fillRect(option->rect, Theme::Now().window);
        return;
    case CE_ComboBoxLabel:
        if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option))
            return PaintComboLabel(*combo, *painter);
        break;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void FlatStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        combo && control == CC_ComboBox)
        return PaintComboBox(*combo, *painter);
    if (const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
        bar && control == CC_ScrollBar)
        return PaintScrollBar(*this, *bar, *painter, widget);
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

int FlatStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
    const Metrics& m = Metrics::Now();
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return m.textHeight;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
    case PM_FocusFrameHMargin:
    case PM_ToolTipLabelFrameWidth:
        return m.unit - 1;
    case PM_ScrollBarExtent:
        return m.unit + m.half + 1;
    case PM_DefaultFrameWidth:
        if (widget && widget->inherits("QPlainTextEdit")) return m.half;
        return widget && widget->inherits("QLineEdit") ? m.half / 2 : 1;
    case PM_DockWidgetTitleMargin:
        return m.half;
    case PM_TabBarTabHSpace:
        return m.Units(4);
    case PM_TabBarTabVSpace:
        return m.Units(2);
    case PM_TabBarBaseHeight:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabShiftHorizontal:
        return 0;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return m.unit;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FlatStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    switch (hint) {
    case SH_BlinkCursorWhenTextSelected:
    case SH_Menu_Scrollable:
        return 1;
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_ScrollBar_ContextMenu:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    case SH_TabBar_ElideMode:
        return Qt::ElideNone; // Too many tabs scroll: what is cut to two letters names nothing.
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QIcon FlatStyle::standardIcon(StandardPixmap picture, const QStyleOption* option,
                              const QWidget* widget) const {
    const QIcon own = BoxIcon(picture);
    return own.isNull() ? QProxyStyle::standardIcon(picture, option, widget) : own;
}

QSize FlatStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_HeaderSection) result.setHeight(Metrics::Now().textHeight + Metrics::Now().unit);
    if (type == CT_PushButton) {
        const Metrics& m = Metrics::Now();
        result.setWidth(std::max(size.width() + m.Units(3), m.Units(6)));
        result.setHeight(std::max(result.height(), m.boxHeight));
    }
    return result;
}

} // namespace zentrel::view

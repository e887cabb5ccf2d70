#include "screens/qt/wire_table.h"

#include <algorithm>

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>

#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"
#include "transport/monitor/wire_text.h"

namespace zentrel::view {

namespace {

/// The cell of one bit, and the hair between groups of four.
struct BitCell {
    int width, gap;
};

BitCell CellOf(const QFont& font) {
    const int width = QFontMetrics(font).horizontalAdvance(QLatin1Char('0'));
    return {width + 1, std::max(2, width / 2)};
}

} // namespace

WireTableModel::WireTableModel(const WireScreen& screen, QObject* parent)
    : QAbstractTableModel(parent), screen_(screen) {}

void WireTableModel::Sync() {
    const int rows = screen_.RowCount();
    if (screen_.listing() != listing_) {
        beginResetModel();
        listing_ = screen_.listing();
        dropped_ = screen_.dropped();
        rows_ = rows;
        endResetModel();
        return;
    }
    const auto gone = static_cast<int>(
        std::min<std::uint64_t>(screen_.dropped() - dropped_, static_cast<std::uint64_t>(rows_)));
    dropped_ = screen_.dropped();
    if (gone > 0) {
        beginRemoveRows({}, 0, gone - 1);
        rows_ -= gone;
        endRemoveRows();
    }
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    }
}

int WireTableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int WireTableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(WireScreen::kColumns);
}

QVariant WireTableModel::data(const QModelIndex& index, int role) const {
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return FromModel(screen_.Text(index.row(), static_cast<WireScreen::Column>(column)));
    case Qt::FontRole:
        if (column == WireScreen::kHex || column == WireScreen::kRead) return MonospacedFont();
        return {};
    case Qt::ForegroundRole:
        return Ink(index.row(), column);
    case Qt::ToolTipRole:
        if (column != WireScreen::kFields && column != WireScreen::kPins) return {};
        return TipText(screen_.Text(index.row(), static_cast<WireScreen::Column>(column)));
    default:
        return {};
    }
}

QVariant WireTableModel::Ink(int row, int column) const {
    const Theme& theme = Theme::Now();
    const WireRecord* record = screen_.Row(row);
    if (record == nullptr) return {};
    switch (column) {
    case WireScreen::kTime:
    case WireScreen::kRoute:
        return theme.muted;
    case WireScreen::kRegister:
        return record->kind == WireKind::Word ? QVariant() : QVariant(theme.muted);
    case WireScreen::kRemark:
        return WireFailed(*record) ? theme.Ink(colors::kRed) : theme.muted;
    default:
        return {};
    }
}

QVariant WireTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return FromModel(WireScreen::Title(static_cast<WireScreen::Column>(section)));
}

int WireBitsDelegate::WidthOf(int bits) {
    const BitCell cell = CellOf(MonospacedFont());
    return bits * cell.width + (bits + 3) / 4 * cell.gap + Metrics::Now().Units(2);
}

void WireBitsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString bits = item.text;
    item.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, option.widget);
    const WireRecord* record = screen_.Row(index.row());
    if (record == nullptr || bits.isEmpty()) return;

    const Theme& theme = Theme::Now();
    const bool selected = option.state & QStyle::State_Selected;
    const BitWord changed = WireChangedBits(*record);
    const int control = record->map->source.control;
    const QFont font = MonospacedFont();
    const BitCell cell = CellOf(font);
    painter->save();
    painter->setClipRect(option.rect);
    painter->setFont(font);
    int x = option.rect.left() + Metrics::Now().unit - 2;
    const int count = static_cast<int>(bits.size());
    for (int i = 0; i < count; ++i) {
        const int bit = count - 1 - i;
        const QRect place(x, option.rect.top(), cell.width, option.rect.height());
        const bool marked = changed.Test(bit);
        if (marked) {
            const QRect box = place.adjusted(0, 2, 0, -2);
            painter->fillRect(box, selected ? theme.onAccent : theme.accent);
        }
        QColor ink = bit < control ? theme.muted : theme.text;
        if (selected) ink = theme.onAccent;
        if (marked) ink = selected ? theme.accent : theme.onAccent;
        painter->setPen(ink);
        painter->drawText(place, Qt::AlignCenter, QString(bits[i]));
        x += cell.width + (bit % 4 == 0 ? cell.gap : 0);
    }
    painter->restore();
}

void WireDetailsModel::Show(std::vector<WireScreen::Detail> details) {
    beginResetModel();
    details_ = std::move(details);
    endResetModel();
}

int WireDetailsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(details_.size());
}

int WireDetailsModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 2;
}

QVariant WireDetailsModel::data(const QModelIndex& index, int role) const {
    const WireScreen::Detail& detail = details_[static_cast<std::size_t>(index.row())];
    const bool value = index.column() == 1;
    switch (role) {
    case Qt::DisplayRole:
        if (!value) return FromModel(detail.name);
        return FromModel(detail.changed ? detail.value + "  \u25CF" : detail.value);
    case Qt::AccessibleTextRole:
        return FromModel((value ? detail.value : detail.name) +
                         (value && detail.changed ? ", changed" : ""));
    case Qt::ToolTipRole:
        return detail.changed ? QStringLiteral("Changed since the word before") : QString();
    case Qt::FontRole:
        return value && detail.packet ? QVariant(MonospacedFont()) : QVariant();
    case Qt::ForegroundRole:
        if (value && detail.changed) return Theme::Now().accent;
        return value ? QVariant() : QVariant(Theme::Now().muted);
    default:
        return {};
    }
}

} // namespace zentrel::view

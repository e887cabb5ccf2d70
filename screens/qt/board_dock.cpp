#include "screens/qt/board_dock.h"

#include <QFontMetrics>
#include <QHeaderView>
#include <QTableView>

#include "screens/qt/metrics.h"

namespace zentrel::view {

namespace {
constexpr const char* kTitles[] = {"Time", "Route", "Register", "Word"};
enum Column { kTime, kRoute, kName, kHex, kColumns };
} // namespace

LatchedWordModel::LatchedWordModel(LatchedWords words, QObject* parent)
    : QAbstractTableModel(parent), words_(std::move(words)) {}

void LatchedWordModel::Sync() {
    const std::size_t now = words_.count ? words_.count() : 0;
    if (now == count_) return;
    cachedIndex_ = static_cast<std::size_t>(-1);
    if (now < count_) {
        beginResetModel();
        count_ = now;
        endResetModel();
        return;
    }
    beginInsertRows({}, 0, static_cast<int>(now - count_) - 1);
    count_ = now;
    endInsertRows();
}

int LatchedWordModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(count_);
}

int LatchedWordModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QVariant LatchedWordModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::FontRole && index.column() == kHex) return MonospacedFont();
    if (role == Qt::TextAlignmentRole && index.column() == kHex)
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole) return {};
    const std::size_t at = count_ - 1 - static_cast<std::size_t>(index.row());
    if (at >= count_) return {};
    if (at != cachedIndex_) {
        cached_ = words_.row(at);
        cachedIndex_ = at;
    }
    switch (index.column()) {
    case kTime: return cached_.time;
    case kRoute: return cached_.route;
    case kName: return cached_.name;
    default: return cached_.hex;
    }
}

QVariant LatchedWordModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue((section == kHex ? Qt::AlignRight : Qt::AlignLeft) |
                                   Qt::AlignVCenter);
    if (role == Qt::DisplayRole) return QString::fromLatin1(kTitles[section]);
    return {};
}

BoardDock::BoardDock(LatchedWords words, QWidget* parent)
    : QDockWidget(tr("Board"), parent), model_(new LatchedWordModel(std::move(words), this)),
      table_(new QTableView(this)) {
    setObjectName(QStringLiteral("dockBoard"));
    table_->setModel(model_);
    table_->setFrameShape(QFrame::NoFrame);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setWordWrap(false);
    table_->setAccessibleName(tr("Words that the board latched, newest first"));
    QHeaderView* rows = table_->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(Metrics::Now().textHeight + Metrics::Now().half);
    QHeaderView* columns = table_->horizontalHeader();
    columns->setHighlightSections(false);
    columns->setSectionResizeMode(QHeaderView::Interactive);
    columns->setStretchLastSection(true);
    const QFontMetrics text(font());
    const int gap = Metrics::Now().Units(2);
    table_->setColumnWidth(kTime, text.horizontalAdvance(QStringLiteral("00:00:00.000")) + gap);
    table_->setColumnWidth(kRoute, text.horizontalAdvance(QStringLiteral("Route")) + gap * 2);
    table_->setColumnWidth(kName, text.horizontalAdvance(QStringLiteral("Register 00")) + gap);
    table_->setMinimumWidth(Metrics::Now().Units(30));
    setWidget(table_);
}

void BoardDock::Sync() { model_->Sync(); }

} // namespace zentrel::view

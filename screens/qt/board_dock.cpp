#include "screens/qt/board_dock.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QFontMetrics>
#include <QHeaderView>
#include <QTableView>

#include "device/bit_string.h"
#include "screens/menu_model.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"
#include "transport/bench/board.h"

namespace zentrel::view {

namespace {

constexpr const char* kTitles[] = {"Time", "Route", "Register", "Word"};
constexpr const char* kMenuEntry = "mnuBoard";

QString HexOf(const BitWord& word) {
    std::int16_t digits = 7;
    return FromModel("0x" + FormatHexGrouped(word, digits, 4));
}

QString TimeOf(const LatchedWord& word) {
    using std::chrono::milliseconds;
    const auto since = std::chrono::duration_cast<milliseconds>(word.time.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(since.count()).toString(QStringLiteral("HH:mm:ss.zzz"));
}

} // namespace

LatchedWordModel::LatchedWordModel(const Board& board, QObject* parent)
    : QAbstractTableModel(parent), board_(board) {}

void LatchedWordModel::Sync() {
    const int rows = static_cast<int>(board_.history().size());
    const std::uint64_t newest = board_.newest();
    if (newest == newest_ && rows == rows_) return;
    const auto fresh = static_cast<int>(std::min<std::uint64_t>(newest - newest_, 1U << 30));
    newest_ = newest;
    if (fresh > 0 && fresh < rows && rows >= rows_) {
        beginInsertRows({}, 0, fresh - 1);
        rows_ += fresh;
        endInsertRows();
        if (rows_ == rows) return;
        beginRemoveRows({}, rows, rows_ - 1); // The oldest made room.
        rows_ = rows;
        endRemoveRows();
        return;
    }
    beginResetModel();
    rows_ = rows;
    endResetModel();
}

int LatchedWordModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int LatchedWordModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kColumns);
}

QVariant LatchedWordModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::FontRole && index.column() == kWord) return MonospacedFont();
    if (role == Qt::ForegroundRole && index.column() == kTime) return Theme::Now().muted;
    if (role != Qt::DisplayRole) return {};
    const auto& history = board_.history();
    const std::size_t back = static_cast<std::size_t>(index.row()) + 1;
    if (back > history.size()) return {};
    return TextOf(history[history.size() - back], index.column());
}

QString LatchedWordModel::TextOf(const LatchedWord& word, int column) const {
    switch (column) {
    case kTime:
        return TimeOf(word);
    case kRoute:
        return word.route == BoardRoute::Usb ? QStringLiteral("USB") : QStringLiteral("LPT");
    case kRegister:
        return FromModel(word.registerName);
    default:
        return HexOf(word.word);
    }
}

QVariant LatchedWordModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    if (role == Qt::TextAlignmentRole) return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    if (role == Qt::DisplayRole) return QString::fromLatin1(kTitles[section]);
    return {};
}

BoardDock::BoardDock(const Hand& hand, MenuModel& menu, const Board& board, QWidget* parent)
    : QDockWidget(tr("Board"), parent), hand_(hand), menu_(menu),
      model_(new LatchedWordModel(board, this)), table_(new QTableView(this)) {
    setObjectName(QStringLiteral("dockBoard"));
    setFeatures(DockWidgetClosable | DockWidgetMovable);
    table_->setModel(model_);
    table_->setFrameShape(QFrame::NoFrame);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setWordWrap(false);
    table_->setTabKeyNavigation(false); // The arrows move in it; Tab goes on.
    table_->setAccessibleName(tr("Words that the board latched, newest first"));
    QHeaderView* rows = table_->verticalHeader();
    rows->hide();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* columns = table_->horizontalHeader();
    columns->setHighlightSections(false);
    columns->setStretchLastSection(true);
    FitFont();
    setWidget(table_);
}

void BoardDock::FitFont() {
    table_->verticalHeader()->setDefaultSectionSize(Metrics::Now().textHeight +
                                                    Metrics::Now().half);
    const QFontMetrics text(QApplication::font());
    const int gap = Metrics::Now().Units(4);
    table_->setColumnWidth(LatchedWordModel::kTime,
                           text.horizontalAdvance(QStringLiteral("00:00:00.000")) + gap);
    table_->setColumnWidth(LatchedWordModel::kRoute,
                           text.horizontalAdvance(QStringLiteral("Route")) + gap);
    table_->setColumnWidth(LatchedWordModel::kRegister,
                           text.horizontalAdvance(QStringLiteral("Register name")) + gap);
    table_->setMinimumSize(Metrics::Now().Units(24), Metrics::Now().Units(8));
}

QWidget* BoardDock::table() const {
    return table_;
}

void BoardDock::Sync() {
    const bool shown = menu_(kMenuEntry).Checked;
    if (isHidden() == shown) setVisible(shown);
    model_->Sync();
}

void BoardDock::closeEvent(QCloseEvent* event) {
    event->ignore();
    hand_.Do([this] { menu_.Click(kMenuEntry); });
}

} // namespace zentrel::view

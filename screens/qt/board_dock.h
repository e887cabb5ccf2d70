#pragma once

#include <cstddef>
#include <functional>

#include <QAbstractTableModel>
#include <QDockWidget>

class QTableView;

namespace zentrel::view {

/// One word that the board latched, as the dock shows it.
struct LatchedWordRow {
    QString time, route, name, hex;
};

/// Where the dock takes its rows from; row 0 is the oldest. The list only grows, or empties.
struct LatchedWords {
    std::function<std::size_t()> count;
    std::function<LatchedWordRow(std::size_t)> row;
};

/// The latched words, newest first. A row is made only when it is seen.
class LatchedWordModel : public QAbstractTableModel {
  public:
    explicit LatchedWordModel(LatchedWords words, QObject* parent = nullptr);

    /// Takes in what has come since the last call.
    void Sync();
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    LatchedWords words_;
    std::size_t count_ = 0;
    mutable std::size_t cachedIndex_ = static_cast<std::size_t>(-1);
    mutable LatchedWordRow cached_;
};

/// The dock "Board".
class BoardDock : public QDockWidget {
  public:
    BoardDock(LatchedWords words, QWidget* parent);
    void Sync();

  private:
    LatchedWordModel* model_;
    QTableView* table_;
};

} // namespace zentrel::view

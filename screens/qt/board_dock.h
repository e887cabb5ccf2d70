#pragma once

#include <cstdint>

#include <QAbstractTableModel>
#include <QDockWidget>

#include "screens/qt/hand.h"

class QTableView;

namespace zentrel {
class Board;
class MenuModel;
struct LatchedWord;
} // namespace zentrel

namespace zentrel::view {

/// The words that the simulated board latched, newest first. A row's texts are made only when it
/// is seen, so a long history costs nothing.
class LatchedWordModel : public QAbstractTableModel {
  public:
    enum Column { kTime, kRoute, kRegister, kWord, kColumns };

    explicit LatchedWordModel(const Board& board, QObject* parent = nullptr);

    /// Takes in what has come since the last call.
    void Sync();
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QString TextOf(const LatchedWord& word, int column) const;

    const Board& board_;
    int rows_ = 0;
    std::uint64_t newest_ = 0;
};

/// The dock "Board". The entry of that name in the menu "Bench" shows and hides it.
class BoardDock : public QDockWidget {
  public:
    BoardDock(const Hand& hand, MenuModel& menu, const Board& board, QWidget* parent);

    void Sync();
    /// The application's font has changed.
    void FitFont();
    /// What takes the focus; the Tab key comes to it behind the pages.
    QWidget* table() const;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    const Hand& hand_;
    MenuModel& menu_;
    LatchedWordModel* model_;
    QTableView* table_;
};

} // namespace zentrel::view

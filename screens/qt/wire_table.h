#pragma once

#include <QAbstractTableModel>
#include <QStyledItemDelegate>

#include "screens/wire_screen.h"

namespace zentrel::view {

/// The monitor's list as the toolkit has it. Texts are made for the rows in sight alone.
class WireTableModel : public QAbstractTableModel {
  public:
    WireTableModel(const WireScreen& screen, QObject* parent);

    /// Adds and drops what the screen's list did since.
    void Sync();
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    QVariant Ink(int row, int column) const;

    const WireScreen& screen_;
    int rows_ = 0;
    std::uint64_t dropped_ = 0, listing_ = 0;
};

/// Paints a word's bits on an exact grid, in groups of four, with those marked that changed.
class WireBitsDelegate : public QStyledItemDelegate {
  public:
    WireBitsDelegate(const WireScreen& screen, QObject* parent)
        : QStyledItemDelegate(parent), screen_(screen) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The width of a word of `bits` bits.
    static int WidthOf(int bits);

  private:
    const WireScreen& screen_;
};

/// What the shown record says, line by line.
class WireDetailsModel : public QAbstractTableModel {
  public:
    using QAbstractTableModel::QAbstractTableModel;

    void Show(std::vector<WireScreen::Detail> details);
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

  private:
    std::vector<WireScreen::Detail> details_;
};

} // namespace zentrel::view

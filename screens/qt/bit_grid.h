#pragma once

#include <QRect>

namespace zentrel::view {

/// The exact cell grid on which all bit rows and rulers stand. Groups of four bits, counted from
/// bit 0, stand apart by a hair.
struct BitGrid {
    int bits = 0;        ///< Digits of a word.
    int controlBits = 0; ///< How many of the lowest can't be edited.
    bool lsbFirst = false;

    /// The cell sizes for the present font.
    static int CellWidth();
    static int Hair();
    static int Padding();

    /// Left edge of a column in a row that begins at 0.
    int Left(int column) const;
    /// Width of a whole row.
    int Width() const {
        return bits > 0 ? Left(bits - 1) + CellWidth() + Padding() : 2 * Padding();
    }
    /// The column at `x`, kept within the word.
    int ColumnAt(int x) const;
    /// The bit number that a column shows.
    int BitOf(int column) const { return lsbFirst ? column : bits - 1 - column; }
    bool IsControl(int column) const { return BitOf(column) < controlBits; }

    bool operator==(const BitGrid&) const = default;
};

} // namespace zentrel::view

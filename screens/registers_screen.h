#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "device/bit_word.h"
#include "form/elements.h"

namespace zentrel {

class cPart;
class cRegister;

/// The Registers tab: one row of bits for each register word, edited digit by digit.
///
/// A row's text is the word's bits with two blanks between digits, so bit columns are three
/// characters apart. A caret position p counts characters of that text.
class RegistersScreen {
  public:
    explicit RegistersScreen(cPart& part);

    // The rows, by number. Row 0 is the design template until the device has a register.
    ElementArray<Label> lblRegName;     ///< The register's `ID`: leads the handlers to it.
    ElementArray<TextBox> txtRegBits;   ///< The bits; `SelStart` is the caret.
    ElementArray<Button> cmdLoadReg;    ///< "Load".
    ElementArray<Label> lblRegName2;    ///< The `ID` again, at the right end.
    ElementArray<Label> lblHexRegValue; ///< "0x" and the word in groups of four digits.
    ElementArray<Button> cmdReadback;   ///< "Read"; visible with a read-back device only.

    // The ruler: tens and ones of each bit's number. Number 1 serves the rows from 35 on.
    ElementArray<Label> lblTens, lblOnes;
    Shape shpBitHiLite; ///< Marks the caret's column in the ruler: see Marker().
    Label lblHexValue;  ///< "Hex Value", beside the caret's row.
    Label lblHexDisplay;
    Button cmdBitOrder; ///< "MSB -->" or "LSB -->": which bit stands on the left.
    ScrollBar hscRegisters, vscRegisters;
    Button cmdBoxRegisters; ///< The corner piece between the two bars.

    // Reading back one register or field; visible with a read-back device only.
    TextBox txtReadRegName; ///< Name of the field that `cmdReadRegister` reads.
    Button cmdReadRegister;
    ElementArray<Option> oReadbackBase; ///< Binary, decimal, hexadecimal.
    TextBox txtReadbackRegVal;

    /// A word in `lblHexRegValue`: its fewest digits, and the digits of a group.
    static constexpr std::int16_t kHexDigits = 7;
    static constexpr std::int16_t kHexGroup = 4;

    /// Rows in use.
    int RowCount() const { return rows_; }
    /// From this row on the second ruler serves, on a device that has so many.
    static constexpr int kSecondRulerRow = 35;
    bool HasSecondRuler() const { return rows_ > kSecondRulerRow; }
    bool MsbFirst() const { return msbFirst_; }

    /// The column marker: the row it belongs to, the bit column from the left, the ruler it stands
    /// in. Row -1 while it is hidden.
    struct MarkerPlace {
        int row = -1;
        int column = 0;
        int ruler = 0;
        bool operator==(const MarkerPlace&) const = default;
    };
    const MarkerPlace& Marker() const { return marker_; }
    /// The row that has the focus as far as the keys moved it; -1 before any click.
    int CaretRow() const { return caretRow_; }
    /// The bit that a caret position stands for in a row.
    int BitAt(int row, int position) const;
    /// Whether that position lies in the control bits, which can't be edited.
    bool InControlBits(int row, int position) const;

    // What a user does.
    void ClickBits(int row, int position);
    void DoubleClickBits(int row);
    enum class Arrow { Left, Right, Up, Down };
    void KeyDown(int row, Arrow arrow);
    /// Any character key; only "0" and "1" write.
    void KeyPress(int row, char key);
    void ClickLoad(int row);
    void ClickBitOrder();
    void ClickRead(int row);
    void ClickReadRegister();
    void SelectReadbackBase(int index);

    /// Brings all rows in line with the words. Only rows whose word changed are rewritten.
    void UpdateRegisterDisplay();
    /// The ruler for words of that many bits.
    void RegisterLengthChanged(int bits);
    /// A row at the end, for a register that the load added.
    void AddRow(const cRegister& reg);
    /// Takes all rows down.
    void Clear();
    /// Another tab was selected.
    void TabSelected(int now);

    /// Grows when rows come or go or the ruler changes.
    std::uint64_t layout() const { return layout_; }
    /// Grows when the row's bits were rewritten.
    std::uint64_t revision(int row) const { return shown_[static_cast<std::size_t>(row)].revision; }
    /// A '1' for each digit of the row, from left to right, that was changed since the word was
    /// loaded or sent; empty when none was.
    std::string UnsentBits(int row);
    /// What a row's name tells when it is pointed at.
    std::string TipOn(int row) const;
    /// The same for one of its bits, by its number.
    std::string TipOnBit(int row, int bit) const;

  private:
    struct ShownRow {
        BitWord word;
        int length = 0;
        bool msbFirst = true;
        bool drawn = false;
        std::uint64_t revision = 0;
        std::optional<BitWord> loaded; ///< The word as the row first showed it.
    };

    cRegister& RegisterOf(int row) const;
    bool IsRow(int row) const { return row >= 0 && row < rows_; }
    TextBox& Bits(int row) { return txtRegBits[static_cast<std::size_t>(row)]; }
    int TextWidth(int row) const;
    void MakeTemplate();
    void ShowReadback(bool visible);
    /// Red where a bit can be edited, blue in the control bits.
    Color CaretColor(int row, int position) const;
    void RestColors();
    void ColorRow(int row, Color color);
    void MoveTo(int row, int position, Color color);
    void PlaceMarker(int row, int position, Color color);
    void ShowHex(int row);
    void HideMarker();
    void RedoClick(int row);
    void StepTowardsMsb(int row);
    void RewriteRow(int row, const cRegister& reg);
    void ShowRead(double value);

    cPart& part_;
    int rows_ = 0;
    bool msbFirst_ = true;
    int caretRow_ = -1;
    MarkerPlace marker_;
    std::vector<ShownRow> shown_;
    std::uint64_t layout_ = 0;
};

} // namespace zentrel

#include <algorithm>

#include "device/bit_string.h"
#include "device/part.h"
#include "screens/registers_screen.h"

namespace zentrel {

// The caret of the Registers tab: clicks, arrows, digits, and the marks that follow it.

namespace {

constexpr int kColumn = 3; // characters from one digit to the next
constexpr int kTwipsPerDigit = 180;

constexpr int ColumnStart(int position) {
    return position - position % kColumn;
}

} // namespace

int RegistersScreen::TextWidth(int row) const {
    return static_cast<int>(txtRegBits[static_cast<std::size_t>(row)].Text.size());
}

int RegistersScreen::BitAt(int row, int position) const {
    return (msbFirst_ ? TextWidth(row) - position : position) / kColumn;
}

bool RegistersScreen::InControlBits(int row, int position) const {
    const int control = kColumn * part_.ControlLength;
    return msbFirst_ ? position > TextWidth(row) - control : position < control;
}

Color RegistersScreen::CaretColor(int row, int position) const {
    return InControlBits(row, position) ? colors::kBlue : colors::kRed;
}

void RegistersScreen::RestColors() {
    for (int row = 0; row < rows_; ++row)
        ColorRow(row, colors::kButtonText);
}

void RegistersScreen::ColorRow(int row, Color color) {
    lblRegName[static_cast<std::size_t>(row)].ForeColor = color;
    lblHexRegValue[static_cast<std::size_t>(row)].ForeColor = color;
}

void RegistersScreen::HideMarker() {
    marker_ = {};
    shpBitHiLite.Visible = false;
    lblHexDisplay.Visible = lblHexValue.Visible = false;
}

void RegistersScreen::PlaceMarker(int row, int position, Color color) {
    ColorRow(row, color);
    marker_ = {row, position / kColumn, row < kSecondRulerRow ? 0 : 1};
    shpBitHiLite.BorderColor = color;
    shpBitHiLite.Left = marker_.column * kTwipsPerDigit;
    shpBitHiLite.Visible = true;
}

void RegistersScreen::ShowHex(int row) {
    std::string digits = Bits(row).Text;
    std::erase(digits, ' ');
    if (!msbFirst_) std::reverse(digits.begin(), digits.end());
    lblHexDisplay.Caption = ConvertBinaryToHex(digits);
    lblHexDisplay.Visible = lblHexValue.Visible = true;
}

void RegistersScreen::ClickBits(int row, int position) {
    if (!IsRow(row)) return;
    RestColors();
    caretRow_ = row;
    TextBox& bits = Bits(row);
    bits.SelStart = std::clamp(position, 0, TextWidth(row));
    RedoClick(row);
}

// A click without its first step: the caret goes to its column's digit, the marks follow.
void RegistersScreen::RedoClick(int row) {
    TextBox& bits = Bits(row);
    const int position = std::min(bits.SelStart, TextWidth(row));
    bits.SelStart = ColumnStart(position);
    bits.SelLength = InControlBits(row, position) ? 0 : 1;
    PlaceMarker(row, bits.SelStart, CaretColor(row, position));
    ShowHex(row);
}

void RegistersScreen::DoubleClickBits(int row) {
    if (IsRow(row)) Bits(row).SelLength = 0;
}

void RegistersScreen::MoveTo(int row, int position, Color color) {
    TextBox& bits = Bits(row);
    bits.SelStart = position;
    bits.SelLength = 1;
    PlaceMarker(row, position, color);
}

void RegistersScreen::KeyDown(int row, Arrow arrow) {
    if (!IsRow(row)) return;
    const int position = Bits(row).SelStart;
    const int width = TextWidth(row);
    const int control = kColumn * part_.ControlLength;
    const auto step = [&](int by) { MoveTo(row, position + by, CaretColor(row, position + by)); };

    switch (arrow) {
    case Arrow::Left:
        if (msbFirst_ ? position != 0 : position > control) step(-kColumn);
        break;
    case Arrow::Right:
        if (msbFirst_ ? position < width - control - 2 : position < width - 2) step(kColumn);
        break;
    case Arrow::Up:
    case Arrow::Down: {
        const int next = row + (arrow == Arrow::Up ? -1 : 1);
        if (!IsRow(next)) break;
        ColorRow(row, colors::kButtonText);
        caretRow_ = next;
        MoveTo(next, position, colors::kRed);
        ShowHex(next);
        break;
    }
    }
}

void RegistersScreen::KeyPress(int row, char key) {
    if (part_.ID.empty() || !IsRow(row)) return;
    const TextBox& bits = Bits(row);
    const int position = bits.SelStart;
    if (bits.SelLength == 1) {
        if (InControlBits(row, position)) return;
        if (key == '0' || key == '1') {
            cRegister& reg = RegisterOf(row);
            const auto bit = static_cast<std::int16_t>(BitAt(row, position));
            if (key == '0') {
                reg.ClrBit(bit);
            } else {
                reg.SetBits(1, bit, 1);
            }
            Displays& displays = *part_.upward().displays;
            displays.UpdatePLLDisplay();
            displays.UpdateCLKDISTDisplay();
            displays.UpdateBitDisplay();
            displays.UpdateRegisterDisplay();
            ShowHex(row);
        }
    }
    StepTowardsMsb(row);
}

void RegistersScreen::StepTowardsMsb(int row) {
    const int position = Bits(row).SelStart;
    int next = msbFirst_ ? position - kColumn : position + kColumn;
    if (next < 0 || next >= TextWidth(row)) next = position;
    MoveTo(row, next, CaretColor(row, next));
}

} // namespace zentrel

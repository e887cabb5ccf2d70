#include "screens/registers_screen.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "device/bit_string.h"
#include "device/number_text.h"
#include "device/part.h"
#include "transport/load_path.h"
#include "transport/readback.h"

namespace zentrel {

// The rows and what they show. The caret and the keys stand in registers_editing.cpp.

namespace {

constexpr int kTwipsPerDigit = 180;

constexpr std::array<std::string_view, 3> kBases{"Binary", "Decimal", "Hex"};
enum Base { kBinary, kDecimal, kHex };

// Digits with two blanks between them, as they stand from left to right.
std::string Spaced(std::string_view digits) {
    std::string text(digits.empty() ? 0 : 3 * digits.size() - 2, ' ');
    for (std::size_t i = 0; i < digits.size(); ++i)
        text[3 * i] = digits[i];
    return text;
}

void Reverse(Label& label) {
    std::reverse(label.Caption.begin(), label.Caption.end());
}

std::string HexNumber(double value) {
    if (const auto number = ToInt32(value)) return "0x" + HexText(*number);
    return "0x" + ConvertBase10(value, "0123456789ABCDEF");
}

template<typename Array>
typename Array::value_type& Fresh(Array& array, int row) {
    if (static_cast<int>(array.size()) <= row) array.emplace_back();
    return array[static_cast<std::size_t>(row)];
}

} // namespace

RegistersScreen::RegistersScreen(cPart& part) : part_(part) {
    cmdBitOrder.Caption = "MSB -->";
    lblHexValue.Caption = "Hex Value";
    cmdReadRegister.Caption = "Read";
    for (const std::string_view base : kBases)
        oReadbackBase.emplace_back().Caption = base;
    oReadbackBase[kHex].Value = true;
    MakeTemplate();
    ShowReadback(false);
    HideMarker();
}

void RegistersScreen::MakeTemplate() {
    lblRegName.resize(1);
    txtRegBits.resize(1);
    cmdLoadReg.resize(1);
    lblRegName2.resize(1);
    lblHexRegValue.resize(1);
    cmdReadback.resize(1);
    lblTens.resize(1);
    lblOnes.resize(1);
    lblTens[0].Caption = "0 0 0";
    lblOnes[0].Caption = "0 1 2";
    lblRegName[0] = {};
    lblRegName[0].Caption = "RegName";
    lblRegName[0].Visible = false;
    txtRegBits[0] = {};
    txtRegBits[0].Text = "1 1 1";
    txtRegBits[0].Visible = false;
    cmdLoadReg[0].Visible = lblRegName2[0].Visible = lblHexRegValue[0].Visible = false;
    cmdReadback[0].Visible = false;
    hscRegisters = {};
    vscRegisters = {};
    hscRegisters.Visible = vscRegisters.Visible = cmdBoxRegisters.Visible = false;
}

void RegistersScreen::ShowReadback(bool visible) {
    txtReadRegName.Visible = cmdReadRegister.Visible = txtReadbackRegVal.Visible = visible;
    for (Option& base : oReadbackBase)
        base.Visible = visible;
}

void RegistersScreen::RegisterLengthChanged(int bits) {
    std::string tens, ones;
    for (int i = 0; i < bits; ++i) {
        tens += static_cast<char>('0' + i / 10 % 10);
        ones += static_cast<char>('0' + i % 10);
    }
    if (msbFirst_) {
        std::reverse(tens.begin(), tens.end());
        std::reverse(ones.begin(), ones.end());
    }
    for (std::size_t i = 0; i < lblTens.size(); ++i) {
        lblTens[i].Caption = Spaced(tens);
        lblOnes[i].Caption = Spaced(ones);
    }
    ++layout_;
}

void RegistersScreen::AddRow(const cRegister& reg) {
    const int row = rows_++;
    Label& name = Fresh(lblRegName, row);
    name.Caption = reg.ID();
    name.Visible = true;
    Label& name2 = Fresh(lblRegName2, row);
    name2.Caption = reg.ID();
    name2.Visible = true;
    TextBox& bits = Fresh(txtRegBits, row);
    bits.Width = part_.RegisterLength() * kTwipsPerDigit + 75;
    bits.Visible = true;
    Button& load = Fresh(cmdLoadReg, row);
    load.Caption = "Load";
    load.Visible = true;
    Fresh(lblHexRegValue, row).Visible = true;
    const bool readable = !part_.ReadbackAddressRegister.empty();
    Button& read = Fresh(cmdReadback, row);
    read.Caption = "Read";
    read.Visible = readable;
    if (row == 0) ShowReadback(readable);
    if (row == kSecondRulerRow) {
        lblTens.push_back(lblTens[0]);
        lblOnes.push_back(lblOnes[0]);
    }
    shown_.emplace_back();
    ++layout_;
}

void RegistersScreen::Clear() {
    rows_ = 0;
    shown_.clear();
    caretRow_ = -1;
    HideMarker();
    MakeTemplate();
    ShowReadback(false);
    txtReadbackRegVal.Text.clear();
    ++layout_;
}

void RegistersScreen::TabSelected(int now) {
    constexpr int kThisTab = 1;
    if (now == kThisTab) {
        RestColors();
        HideMarker(); // and the value that an edit on another tab has shown again
    } else {
        vscRegisters.Visible = false;
        lblHexDisplay.Visible = lblHexValue.Visible = false;
    }
}

cRegister& RegistersScreen::RegisterOf(int row) const {
    return part_.Registers(lblRegName[static_cast<std::size_t>(row)].Caption);
}

void RegistersScreen::UpdateRegisterDisplay() {
    const UpdatingScope updating(part_);
    for (int row = 0; row < rows_; ++row) {
        const auto at = static_cast<std::size_t>(row);
        const cRegister* reg = part_.Registers.Find(lblRegName[at].Caption);
        if (reg == nullptr) continue;
        const ShownRow& shown = shown_[at];
        if (shown.drawn && shown.msbFirst == msbFirst_ && shown.length == part_.RegisterLength() &&
            shown.word == reg->word()) {
            continue;
        }
        RewriteRow(row, *reg);
        if (row == marker_.row) RedoClick(row);
    }
}

void RegistersScreen::RewriteRow(int row, const cRegister& reg) {
    const auto at = static_cast<std::size_t>(row);
    std::string digits = reg.RegisterString();
    if (!msbFirst_) std::reverse(digits.begin(), digits.end());
    txtRegBits[at].Text = Spaced(digits);
    std::int16_t count = kHexDigits;
    lblHexRegValue[at].Caption = "0x" + FormatHexGrouped(reg.word(), count, kHexGroup);

    ShownRow& shown = shown_[at];
    shown.word = reg.word();
    shown.length = part_.RegisterLength();
    shown.msbFirst = msbFirst_;
    shown.drawn = true;
    ++shown.revision;
}

void RegistersScreen::ClickLoad(int row) {
    if (!IsRow(row)) return;
    LoadRegisterNumber(part_, static_cast<std::int16_t>(row + 1));
    RestColors();
    HideMarker();
}

void RegistersScreen::ClickBitOrder() {
    msbFirst_ = !msbFirst_;
    cmdBitOrder.Caption = msbFirst_ ? "MSB -->" : "LSB -->";
    HideMarker();
    RestColors();
    for (std::size_t i = 0; i < lblTens.size(); ++i) {
        Reverse(lblTens[i]);
        Reverse(lblOnes[i]);
    }
    ++layout_;
    UpdateRegisterDisplay();
}

void RegistersScreen::ClickRead(int row) {
    if (!IsRow(row)) return;
    ShowRead(QVX4100ReadRegister(part_, lblRegName[static_cast<std::size_t>(row)].Caption));
}

void RegistersScreen::ClickReadRegister() {
    ShowRead(ReadRegister(part_, txtReadRegName.Text));
}

void RegistersScreen::SelectReadbackBase(int index) {
    for (std::size_t i = 0; i < oReadbackBase.size(); ++i)
        oReadbackBase[i].Value = static_cast<int>(i) == index;
}

void RegistersScreen::ShowRead(double value) {
    if (oReadbackBase[kBinary].Value) {
        txtReadbackRegVal.Text = "Please send money";
    } else if (oReadbackBase[kDecimal].Value) {
        txtReadbackRegVal.Text = NumberToText(value);
    } else {
        txtReadbackRegVal.Text = HexNumber(value);
    }
}

} // namespace zentrel

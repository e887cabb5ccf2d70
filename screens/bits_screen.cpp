#include "screens/bits_screen.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>

#include "device/number_text.h"
#include "device/part.h"

namespace zentrel {

// The elements and where they stand. What they show and do stands in bits_actions.cpp.

namespace {

using Kind = BitsFlow::Kind;

constexpr int kPinLeft = 120;

// The bar's step from a bit's row is shorter than from the others'.
constexpr double kBitStep = 0.3;

// Element `index` of an array, which has it or is one short of it.
template<typename T>
T& Take(ElementArray<T>& array, int index) {
    if (static_cast<int>(array.size()) <= index) array.emplace_back();
    T& element = array[static_cast<std::size_t>(index)];
    element.Visible = true;
    return element;
}

// The field's texts; a list of numbers without texts shows its numbers.
std::vector<std::string> TextsOf(const cPrgmBits& field) {
    const auto& values = field.ValueArray();
    if (field.StringArray().size() > 1 || values.size() < 2) return field.StringArray();
    std::vector<std::string> texts(values.size());
    std::transform(values.begin(), values.end(), texts.begin(), NumberToText);
    return texts;
}

// Back to the template alone, hidden.
template<typename T>
T& Template(ElementArray<T>& array) {
    array.resize(1);
    array[0] = {};
    array[0].Visible = false;
    return array[0];
}

void Stand(Element& element, BitsFlow::Point at, int width, int height) {
    element.Left = at.left;
    element.Top = at.top;
    element.Width = width;
    element.Height = height;
}

} // namespace

BitsScreen::BitsScreen(cPart& part) : part_(part), flow_(sizes_) {
    MakeTemplates();
}

void BitsScreen::MakeTemplates() {
    Template(chkPrgmBit).Caption = "PrgmBit";
    Template(lblCntr).Caption = "Counter";
    Template(txtCntrVal).Text = "0";
    Template(spnCntr);
    Template(lblCmbBits).Caption = "List Box";
    Template(cmbBits);
    Template(chkPrgmPin).Caption = "Program Pin";
    Template(fraPrgmBits).Caption = BitsFlow::kNoGroup;
    fraPrgmPins = {};
    fraPrgmPins.Caption = "Program Pins";
    fraPrgmPins.Visible = false;
    hscPrgmBits = {};
    hscPrgmBits.Tag = "0";
    hscPrgmBits.Visible = false;
}

void BitsScreen::Clear() {
    items_.clear();
    framesUsed_ = pinsUsed_ = 0;
    bitsUsed_ = countersUsed_ = listsUsed_ = 0;
    flow_ = BitsFlow(sizes_);
    MakeTemplates();
    ++layout_;
}

void BitsScreen::AddBit(const cPrgmBits& field, std::string_view group) {
    const int index = bitsUsed_++;
    CheckBox& box = Take(chkPrgmBit, index);
    box.Caption = field.ID;
    box.Click = [this, index] { ToggleField(index); };
    Place(items_.emplace_back(Item{Kind::Bit, index, std::string(group)}));
}

void BitsScreen::AddCounter(const cPrgmBits& field, std::string_view group) {
    const int index = countersUsed_++;
    Take(lblCntr, index).Caption = field.ID;
    Take(txtCntrVal, index).Text = "0";
    Take(spnCntr, index);
    Place(items_.emplace_back(Item{Kind::Counter, index, std::string(group)}));
}

void BitsScreen::AddList(const cPrgmBits& field, std::string_view group) {
    const int index = listsUsed_++;
    Take(lblCmbBits, index).Caption = field.ID;
    ListBox& list = Take(cmbBits, index);
    list.List = TextsOf(field);
    list.ListIndex = -1;
    list.Click = [this, index] { ChooseListEntry(index); };
    Place(items_.emplace_back(Item{Kind::List, index, std::string(group)}));
}

void BitsScreen::AddPin(const cPrgmPin& pin) {
    if (pin.ReadBack()) return;
    const int index = pinsUsed_++;
    CheckBox& box = Take(chkPrgmPin, index);
    box.Caption = pin.ID();
    box.Click = [this, index] { TogglePin(index); };
    PlacePin(index);
    ++layout_;
}

void BitsScreen::PlacePin(int index) {
    const BitsFlow::Point at{kPinLeft, flow_.AddPin()};
    Stand(chkPrgmPin[static_cast<std::size_t>(index)], at, flow_.pins().width - 2 * kPinLeft,
          sizes_.pinHeight);
    ShowPinsFrame();
}

void BitsScreen::ShowPinsFrame() {
    const BitsFlow::Pins& pins = flow_.pins();
    Stand(fraPrgmPins, {pins.left, pins.top}, pins.width, pins.height);
    fraPrgmPins.Visible = pinsUsed_ > 0;
}

void BitsScreen::Place(Item& item) {
    const BitsFlow::Place place = flow_.Add(item.kind, item.group);
    item.frame = place.frame;
    const auto at = static_cast<std::size_t>(item.index);
    const int rest = BitsFlow::kColumnWidth - place.box.left % BitsFlow::kColumnWidth;
    switch (item.kind) {
    case Kind::Bit:
        Stand(chkPrgmBit[at], place.box, rest, sizes_.checkBoxHeight);
        break;
    case Kind::Counter:
        Stand(lblCntr[at], place.label, rest, sizes_.labelHeight);
        Stand(txtCntrVal[at], place.box, sizes_.boxWidth, sizes_.boxHeight);
        Stand(spnCntr[at], place.spinner, sizes_.spinnerWidth, sizes_.boxHeight);
        break;
    case Kind::List:
        Stand(lblCmbBits[at], place.label, rest, sizes_.labelHeight);
        Stand(cmbBits[at], place.box, sizes_.listWidth, sizes_.listHeight);
        break;
    }
    ShowFrames(place.frame);
    NoteOverflow(item.kind);
    ++layout_;
}

// A row touches its own frame, and the flow moves the last one and the pins' frame.
void BitsScreen::ShowFrames(int touched) {
    const auto& frames = flow_.frames();
    framesUsed_ = static_cast<int>(frames.size());
    for (const int number : {touched, framesUsed_ - 1}) {
        const BitsFlow::Frame& frame = frames[static_cast<std::size_t>(number)];
        Frame& element = Take(fraPrgmBits, number);
        element.Caption = frame.caption;
        element.Tag = frame.Tag();
        Stand(element, {frame.left, frame.top}, frame.width, frame.height);
    }
    ShowPinsFrame();
}

void BitsScreen::NoteOverflow(Kind kind) {
    if (flow_.Overflow() == 0) return;
    Session& session = part_.session();
    hscPrgmBits.Visible = true;
    if (kind == Kind::Bit) session.bBitsAndPinsTabTooWide = true;
    constexpr int kMost = std::numeric_limits<std::int16_t>::max();
    session.hscPrgmBits_Max = static_cast<std::int16_t>(std::min(flow_.Overflow(), kMost));
    hscPrgmBits.Max = flow_.Overflow();
    const double step = kind == Kind::Bit ? kBitStep : 1.0;
    hscPrgmBits.LargeChange = static_cast<int>(sizes_.tabWidth * step);
    hscPrgmBits.Tag = "0";
}

void BitsScreen::SetSizes(const BitsSizes& sizes) {
    if (sizes == sizes_) return;
    sizes_ = sizes;
    flow_ = BitsFlow(sizes_);
    hscPrgmBits.Visible = false;
    hscPrgmBits.Value = 0;
    part_.session().bBitsAndPinsTabTooWide = false;
    for (Item& item : items_)
        Place(item);
    for (int index = 0; index < pinsUsed_; ++index)
        PlacePin(index);
    ++layout_;
}

void BitsScreen::Scroll(int value) {
    const int moved = std::atoi(hscPrgmBits.Tag.c_str()) - value;
    for (Frame& frame : fraPrgmBits)
        frame.Left += moved;
    fraPrgmPins.Left += moved;
    hscPrgmBits.Value = value;
    hscPrgmBits.Tag = std::to_string(value);
}

} // namespace zentrel

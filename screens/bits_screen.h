#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "device/upward.h"
#include "form/elements.h"
#include "screens/bits_flow.h"

namespace zentrel {

/// The Bits/Pins tab: a small element for each displayed field, grouped in frames, and a check
/// box for each output pin. Element 0 of each kind is the design template until a field takes it.
class BitsScreen {
  public:
    explicit BitsScreen(cPart& part);

    ElementArray<CheckBox> chkPrgmBit; ///< Fields of one bit; the caption is the field's key.
    ElementArray<Label> lblCntr;       ///< The key of counter i, beside its
    ElementArray<TextBox> txtCntrVal;  ///< box and
    ElementArray<Spinner> spnCntr;     ///< up and down buttons.
    ElementArray<Label> lblCmbBits;    ///< The key of list i, beside its
    ElementArray<ListBox> cmbBits;     ///< drop-down list.
    ElementArray<CheckBox> chkPrgmPin; ///< Output pins; the caption is the pin's key.
    ElementArray<Frame> fraPrgmBits;   ///< Groups; the tag is the filling state.
    Frame fraPrgmPins;                 ///< "Program Pins".
    ScrollBar hscPrgmBits;

    /// Elements in use, in the order of the load.
    struct Item {
        BitsFlow::Kind kind;
        int index; ///< In the arrays of its kind.
        std::string group;
        int frame = 0;
    };
    const std::vector<Item>& Items() const { return items_; }
    int FrameCount() const { return framesUsed_; }
    int PinCount() const { return pinsUsed_; }

    // What the load adds. The elements are captioned, placed and shown.
    void AddBit(const cPrgmBits& field, std::string_view group);
    void AddCounter(const cPrgmBits& field, std::string_view group);
    void AddList(const cPrgmBits& field, std::string_view group);
    void AddPin(const cPrgmPin& pin);
    /// Takes everything down.
    void Clear();

    /// Brings all elements in line with the model. What fails is passed over, but for a list that
    /// refuses its index, which is told.
    void UpdateBitDisplay();

    // What a user does. A click on a check box or a list entry is SetValue or SetListIndex of the
    // element itself.
    void SpinDown(int index);
    void SpinUp(int index);
    /// Enter in `txtCntrVal(index)`.
    void EnterCounter(int index);
    /// A right click: tells the field's description.
    void HelpOnBit(int index);
    void HelpOnCounter(int index);
    void HelpOnList(int index);
    /// `hscPrgmBits` was moved to `value`.
    void Scroll(int value);

    /// Places everything anew for other sizes of window and widgets.
    void SetSizes(const BitsSizes& sizes);
    /// What a field's element tells when it is pointed at.
    std::string TipOn(const std::string& field) const;
    const BitsSizes& sizes() const { return sizes_; }

    /// Grows when elements come or go or are placed anew.
    std::uint64_t layout() const { return layout_; }

  private:
    void MakeTemplates();
    void Place(Item& item);
    void PlacePin(int index);
    void ShowFrames(int touched);
    void ShowPinsFrame();
    void NoteOverflow(BitsFlow::Kind kind);
    void ToggleField(int index);
    void ChooseListEntry(int index);
    void TogglePin(int index);
    void Step(int index, void (cPrgmBits::*step)());
    void Act(const std::function<void()>& change);
    void ShowHelp(const std::string& field);
    void ShowBits();
    void ShowPins();
    void ShowCounters();
    void ShowLists();
    void RefreshAfterEdit();
    void ReloadChanges();

    cPart& part_;
    BitsSizes sizes_;
    BitsFlow flow_;
    std::vector<Item> items_;
    int framesUsed_ = 0;
    int pinsUsed_ = 0;
    int bitsUsed_ = 0, countersUsed_ = 0, listsUsed_ = 0;
    std::uint64_t layout_ = 0;
};

} // namespace zentrel

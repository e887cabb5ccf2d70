#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// Screen elements as plain data. Logic, scripts and clients read and write these; a view draws
/// them. Members carry the names that scripts use. Geometry is in twips (1/1440 inch).
namespace zentrel {

/// A colour value with red in the low byte: 0xBBGGRR.
using Color = std::uint32_t;

namespace colors {
inline constexpr Color kWhite = 0xFFFFFF;
inline constexpr Color kRed = 0x0000FF;
inline constexpr Color kYellow = 0x00FFFF;
inline constexpr Color kBlue = 0xFF0000;
inline constexpr Color kGreen = 0x00FF00;
inline constexpr Color kCyan = 0xFFFF00;
inline constexpr Color kMagenta = 0xFF00FF;
inline constexpr Color kBlack = 0x000000;
/// Back colour of a control whose value is out of the signal path.
inline constexpr Color kOutOfPath = 0xB0B0B0;
/// A connector pin with nothing on it.
inline constexpr Color kUnassigned = 0x808080;
/// The system's own text colour on buttons: a label at rest.
inline constexpr Color kButtonText = 0x80000012;
} // namespace colors

/// What every element has. `Visible` is the element's own flag, never the toolkit's idea of what
/// stands on the screen at the moment.
struct Element {
    std::string Tag; ///< A binding: the name of a program bit or PLL, or a routine's own note.
    bool Visible = true;
    bool Enabled = true;
    Color BackColor = colors::kWhite;
    Color ForeColor = colors::kButtonText;
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
};

/// A label, a check of wording, a clickable readout.
struct Label : Element {
    std::string Caption;
};

/// An entry box. Acts on Enter and on losing the focus only; `Text` holds every keystroke.
struct TextBox : Element {
    std::string Text;
    int SelStart = 0;  ///< Caret, in characters.
    int SelLength = 0; ///< Selected characters behind the caret.
};

/// A button or other element with a caption that a click acts on.
struct Button : Element {
    std::string Caption;
};

/// A group box.
struct Frame : Element {
    std::string Caption;
};

/// A drawn box, circle or connector; `BorderWidth` and `BorderColor` mark hover and path.
struct Shape : Element {
    int BorderWidth = 1;
    Color BorderColor = colors::kBlack;
};

/// A drawn line; `BorderWidth` 2 marks the selected path.
struct Line : Element {
    int BorderWidth = 1;
    Color BorderColor = colors::kBlack;
};

/// Up and down buttons. They keep no number of their own.
struct Spinner : Element {};

/// A check box. `Click` is its handler: it fires for the user's click and for a program's change.
struct CheckBox : Element {
    std::string Caption;
    bool Value = false;
    std::function<void()> Click;

    /// Sets the mark; a change fires the handler, as a click would.
    void SetValue(bool value) {
        if (value == Value) return;
        Value = value;
        if (Click) Click();
    }
};

/// One option of a group. Selecting it clears its sisters, which is the group's business.
struct Option : Element {
    std::string Caption;
    bool Value = false;
};

/// A drop-down list. `ListIndex` -1 means no selection.
struct ListBox : Element {
    std::vector<std::string> List;
    int ListIndex = -1;
    std::function<void()> Click;

    int ListCount() const { return static_cast<int>(List.size()); }
    void AddItem(std::string text) { List.push_back(std::move(text)); }
    void Clear() {
        List.clear();
        ListIndex = -1;
    }
    /// Selects an entry; a change fires the handler. Returns false, and changes nothing, when
    /// the list has no such entry.
    bool SetListIndex(int index) {
        if (index < -1 || index >= ListCount()) return false;
        if (index == ListIndex) return true;
        ListIndex = index;
        if (Click) Click();
        return true;
    }
};

/// A scroll bar's data; the toolkit scrolls, these are what scripts can see.
struct ScrollBar : Element {
    int Min = 0;
    int Max = 32767;
    int Value = 0;
    int LargeChange = 1;
};

/// A timer. `Interval` is in milliseconds.
struct Timer {
    bool Enabled = false;
    int Interval = 0;
};

/// A menu entry.
struct MenuItem {
    std::string Caption;
    bool Visible = true;
    bool Enabled = true;
    bool Checked = false;
};

/// A control array: index to element, with addresses that stay put while it grows.
template<typename T>
using ElementArray = std::deque<T>;

} // namespace zentrel

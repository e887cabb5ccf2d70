#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zentrel {

/// Sizes that the flow of the Bits/Pins tab works with, in twips. The defaults are the design's;
/// a view feeds the sizes that its widgets really have.
struct BitsSizes {
    int windowHeight = 6405; ///< Outer height of the main window.
    int tabWidth = 9495;     ///< Width of `tabPart`.
    int checkBoxHeight = 255;
    int labelHeight = 195;
    int boxHeight = 285; ///< Of a counter's box.
    int boxWidth = 1815;
    int spinnerWidth = 255;
    int listHeight = 315;
    int listWidth = 2070;
    int pinHeight = 255;

    bool operator==(const BitsSizes&) const = default;
};

/// Where the elements of the Bits/Pins tab stand: rows fill columns inside frames, frames fill
/// columns of the tab, and the pins' frame stands right of them all. Pure arithmetic.
class BitsFlow {
  public:
    enum class Kind { Bit, Counter, List };

    struct Point {
        int left = 0;
        int top = 0;
    };
    /// A row inside its frame. A bit has its check box at `box`; a counter a label, a box and a
    /// spinner; a list a label and the list at `box`.
    struct Place {
        int frame = 0;
        Point label, box, spinner;
    };
    struct Frame {
        std::string caption;
        int left = 0, top = 0, width = 0, height = 0;
        int x = 0, y = 0; ///< Left edge of the current column and top of the next row.
        /// Both in one number, 65536 * x + y: the frame's filling state as its tag has it.
        std::string Tag() const;
    };
    struct Pins {
        int left = 0, top = 0, width = 0, height = 0;
    };

    /// From one column of a frame to the next.
    static constexpr int kColumnWidth = 2340;
    /// What frame 0 is called until a group names it.
    static constexpr std::string_view kNoGroup = "Program Bits";

    explicit BitsFlow(const BitsSizes& sizes = {});

    /// Places a row in the frame of its group, at the end of what stands. An empty group goes to
    /// frame 0.
    Place Add(Kind kind, std::string_view group);
    /// Places a pin's check box in the pins' frame and gives its top.
    int AddPin();

    const std::vector<Frame>& frames() const { return frames_; }
    const Pins& pins() const { return pins_; }
    /// By how much the content is wider than the tab, 0 when it fits.
    int Overflow() const { return overflow_; }

  private:
    int FrameFor(std::string_view group);
    void FlowLastFrame();
    void PlacePins();

    BitsSizes sizes_;
    std::vector<Frame> frames_;
    Pins pins_;
    int pinCount_ = 0;
    int lastPinTop_ = 0;
    int overflow_ = 0;
};

} // namespace zentrel

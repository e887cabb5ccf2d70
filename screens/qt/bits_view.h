#pragma once

#include <cstdint>
#include <vector>

#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

namespace zentrel {
class BitsScreen;
struct BitsSizes;
} // namespace zentrel

namespace zentrel::view {

class CaptionLabel;
class CheckMark;
class DropList;
class EntryBox;
class GroupFrame;
class ScrollPage;
class SpinnerButtons;

/// The Bits/Pins tab. The model says where each element stands; the view tells it how large the
/// widgets and the window really are.
class BitsView : public ScreenView {
  public:
    BitsView(const Hand& hand, BitsScreen& model, QWidget* parent = nullptr);

    void Sync() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    /// What the widgets were made for: as long as it stays, they only move.
    struct Shape {
        int kind, index, frame;
        bool operator==(const Shape&) const = default;
    };
    struct Bit {
        std::size_t index;
        CheckMark* box;
    };
    struct Counter {
        std::size_t index;
        CaptionLabel* label;
        EntryBox* box;
        SpinnerButtons* spinner;
    };
    struct List {
        std::size_t index;
        CaptionLabel* label;
        DropList* list;
    };

    void Rebuild();
    void AddBit(std::size_t index, QWidget* frame);
    void AddCounter(std::size_t index, QWidget* frame);
    void AddList(std::size_t index, QWidget* frame);
    std::vector<Shape> ShapeNow() const;
    void NameWidgets();
    void TellOnHover(QWidget* widget, const std::string& field);
    void Place();
    void PlaceFrames();
    void PlacePins();
    int Rise() const;
    int Shift() const;
    void FitContent();
    BitsSizes RealSizes() const;

    const Hand& hand_;
    BitsScreen& model_;
    ScrollPage* page_;
    QWidget* content_;
    std::vector<GroupFrame*> frames_;
    GroupFrame* pinsFrame_ = nullptr;
    std::vector<Bit> bits_, pins_;
    std::vector<Counter> counters_;
    std::vector<List> lists_;
    std::vector<Shape> shape_;
    std::uint64_t layout_ = ~0ULL;
};

} // namespace zentrel::view

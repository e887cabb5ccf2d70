#pragma once

#include <cstdint>
#include <vector>

#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

class QBoxLayout;
class QVBoxLayout;

namespace zentrel {
class PortScreen;
}

namespace zentrel::view {

class CableDrawing;
class CaptionLabel;
class EntryBox;
class GroupFrame;
class OptionMark;
class OptionStrip;
class ScrollPage;

/// The Port Setup tab: the route and the parallel port's address, the connector pins line by line,
/// and the cable.
class PortView : public ScreenView {
  public:
    PortView(const Hand& hand, PortScreen& model, QWidget* parent = nullptr);

    void Sync() override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* MakeModes();
    QWidget* MakeAddress();
    QWidget* MakeLines();
    QWidget* MakePins();
    QWidget* MakeDrawing();
    void RebuildPins();
    void Arrange();

    const Hand& hand_;
    PortScreen& model_;
    ScrollPage* page_;
    QWidget* content_;
    QBoxLayout* halves_;
    QWidget* choices_;
    std::vector<GroupFrame*> frames_;
    std::vector<OptionMark*> marks_;
    std::vector<OptionStrip*> lines_, pins_;
    std::vector<CaptionLabel*> labels_;
    std::vector<EntryBox*> boxes_;
    GroupFrame* pinsFrame_ = nullptr;
    QVBoxLayout* pinRows_ = nullptr;
    CableDrawing* drawing_ = nullptr;
    std::uint64_t layout_ = ~0ULL;
};

} // namespace zentrel::view

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "clock/clk_dist.h"
#include "clock/clock_click.h"
#include "clock/signal_path.h"
#include "screens/qt/clock_plan.h"
#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

namespace zentrel {
class cPart;
class frmLoopFilter;
enum class MouseButton;
} // namespace zentrel

namespace zentrel::view {

class CaptionLabel;
class CheckMark;
class DiagramCanvas;
class DropList;
class EntryBox;
class ScrollPage;
class SpinnerButtons;

/// The tab of one clock block: its signal path as a drawing, with the boxes where their numbers
/// belong, above the table of its channels. Entries stand in tab order along the path.
class ClockView : public ScreenView {
  public:
    /// `filter` is the dialog that clicks on the loop filter open.
    ClockView(const Hand& hand, std::shared_ptr<cClkDist> block, frmLoopFilter& filter,
              QWidget* parent = nullptr);

    void Sync() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using Tip = std::function<std::string()>;
    struct Channel {
        EntryBox *divider, *frequency;
        DropList *delay, *mux, *output;
    };

    void AddPath();
    void AddFilter();
    void AddDivider();
    void AddChannel(int channel);
    EntryBox* AddBox(TextBox& element, const char* name, const QString& spoken, ClockBox box,
                     int channel, Tip tip);
    EntryBox* AddReadBox(TextBox& element, const char* name, const QString& spoken, int channel);
    void AddSpinner(EntryBox* box, Spinner& element, const char* name, int channel,
                    const std::function<void(bool up)>& step);
    DropList* AddList(ListBox& element, const char* name, const QString& spoken, int channel,
                      Tip tip);
    CaptionLabel* AddValue(Label& element, const char* name, bool clickable);
    QString NameOf(const char* name, int channel) const;

    /// Explains a field at its element, and why the element is out of the path.
    Tip FieldAndPath(std::function<std::string()> field, ClockItem item, int channel = 0) const;

    void Draw();
    void Place();
    void PlaceChannels();
    void WriteGeometry();
    bool OnCanvas(QEvent* event);
    void HoverAt(const QPoint& at);
    void ClickFilter(CaptionLabel* value, MouseButton button);
    bool OnFilterKey(CaptionLabel* value, int key);
    void Open(OpenLoopFilter how);

    const Hand& hand_;
    std::shared_ptr<cClkDist> block_; ///< Kept: a page lives a little longer than its device.
    ClockPanel& panel_;
    frmLoopFilter& filter_;
    ScrollPage* page_;
    DiagramCanvas* canvas_;
    std::optional<ClockPlan> plan_;

    EntryBox* reference_ = nullptr;
    EntryBox* vco_ = nullptr;
    EntryBox* external_ = nullptr;
    EntryBox* inputDivider_ = nullptr;
    CheckMark* bypass_ = nullptr;
    DropList* inputMux_ = nullptr;
    DropList* delayN_ = nullptr;
    DropList* delayR_ = nullptr;
    std::array<CaptionLabel*, 3> readouts_{};    ///< R, PDF, N.
    std::array<CaptionLabel*, 4> filterNames_{}; ///< R3, C3, R4, C4.
    std::array<CaptionLabel*, 4> filterValues_{};
    Label divided_; ///< `CLKtxt_InputDivOutFreq` with its unit.
    CaptionLabel* dividedValue_ = nullptr;
    std::array<Channel, kClockChannels> channels_{};
    std::vector<EntryBox*> boxes_;
    std::vector<DropList*> lists_;
    std::unordered_map<QObject*, Tip> tips_;
    int hovered_ = -1; ///< Which of the places that react the mouse is over.
};

/// The page of a tab that belongs to a clock block of the device; null for any other tab.
ScreenView* MakeClockPage(const Hand& hand, const cPart& part, frmLoopFilter& filter, int tab,
                          QWidget* parent);

} // namespace zentrel::view

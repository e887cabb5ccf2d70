#pragma once

#include <memory>
#include <vector>

#include "screens/qt/bit_grid.h"
#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

namespace zentrel {
class RegistersScreen;
}

namespace zentrel::view {

class BitRow;
class BitRuler;
class CaptionLabel;
class PushButton;
class ReadbackBar;
class ScrollPage;

/// The Registers tab: a ruler that stays, and below it the rows, which scroll.
class RegistersView : public ScreenView {
  public:
    RegistersView(const Hand& hand, RegistersScreen& model, QWidget* parent = nullptr);
    ~RegistersView() override;

    void Sync() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Row {
        CaptionLabel* name;
        BitRow* bits;
        PushButton* load;
        CaptionLabel* name2;
        CaptionLabel* hex;
        PushButton* read;
    };
    /// Left edges and widths of the columns, in the rows' own coordinates.
    struct Columns {
        int nameLeft = 0, nameWidth = 0;
        int bitsLeft = 0, bitsWidth = 0;
        int loadLeft = 0, loadWidth = 0;
        int name2Left = 0, name2Width = 0;
        int hexLeft = 0, hexWidth = 0;
        int readLeft = 0, readWidth = 0;
        int valueLeft = 0, valueWidth = 0;
        int right = 0;
        bool operator==(const Columns&) const = default;
    };

    void Rebuild();
    std::vector<std::string> Names() const;
    Row MakeRow(std::size_t index);
    Columns Measure() const;
    void Place();
    void PlaceRow(const Row& row, int top) const;
    void PlaceHeader();
    void PlaceHexValue();
    void SyncRows();
    void SyncHeader();
    void FollowCaret();
    BitGrid Grid() const;

    const Hand& hand_;
    RegistersScreen& model_;
    QWidget* header_;
    QWidget* headerContent_;
    PushButton* order_;
    BitRuler* ruler_;
    BitRuler* secondRuler_ = nullptr;
    ScrollPage* page_;
    QWidget* content_;
    ReadbackBar* readback_;
    std::vector<Row> rows_;
    std::vector<std::string> names_;     ///< Of the registers that the rows were made for.
    CaptionLabel* hexValue_ = nullptr;   ///< In the rows' own coordinates,
    CaptionLabel* hexDisplay_ = nullptr; ///< at the row with the caret.
    Columns columns_;
    BitGrid grid_;
    std::uint64_t layout_ = ~0ULL;
    int caretRow_ = -1;
    int caretColumn_ = -1;
};

} // namespace zentrel::view

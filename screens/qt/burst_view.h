#pragma once

#include <string>
#include <vector>

#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

class QPlainTextEdit;

namespace zentrel {
class BurstScreen;
}

namespace zentrel::view {

class CaptionLabel;
class DropList;
class EntryBox;
class PushButton;

/// The BurstMode tab: the list of commands, and beside it what builds, replays and stores it.
class BurstView : public ScreenView {
  public:
    BurstView(const Hand& hand, BurstScreen& model, QWidget* parent = nullptr);

    void Sync() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QWidget* MakeControls();
    PushButton* AddButton(Button& element, const char* name, Hand::Action click, QWidget* parent);
    void SyncList();
    void WriteSelection();

    const Hand& hand_;
    BurstScreen& model_;
    QPlainTextEdit* list_;
    CaptionLabel* label_ = nullptr;
    DropList* registers_ = nullptr;
    EntryBox* delay_ = nullptr;
    std::vector<PushButton*> buttons_;
    std::string shown_;
};

} // namespace zentrel::view

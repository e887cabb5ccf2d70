#pragma once

#include <vector>

#include "screens/qt/hand.h"
#include "screens/qt/screen_view.h"

class QGridLayout;
class QLabel;

namespace zentrel {
class BurstScreen;
}

namespace zentrel::view {

class CaptionLabel;
class DropList;
class EntryBox;
class LineList;
class PushButton;

/// The BurstMode tab: on the left what builds, stores and replays the list, on the right the list.
class BurstView : public ScreenView {
  public:
    BurstView(const Hand& hand, BurstScreen& model, QWidget* parent);

    void Sync() override;

  private:
    PushButton* Add(QWidget* group, const char* name, Button& element, Hand::Action click,
                    const QString& tip);
    QWidget* BuildGroup();
    QWidget* ListGroup();
    QWidget* RunGroup();

    const Hand& hand_;
    BurstScreen& model_;
    CaptionLabel* label_ = nullptr;
    DropList* registers_ = nullptr;
    EntryBox* delay_ = nullptr;
    LineList* list_ = nullptr;
    std::vector<PushButton*> buttons_;
    std::vector<QWidget*> groups_;
};

} // namespace zentrel::view

#pragma once

#include <string>
#include <vector>

#include <QComboBox>

#include "screens/qt/hand.h"

namespace zentrel::view {

/// A drop-down list bound to its element. Choosing an entry sets the element's selection, which
/// fires its handler when it changes.
class DropList : public QComboBox {
  public:
    DropList(const Hand& hand, ElementRef<ListBox> element, QWidget* parent);

    void Sync();
    /// What choosing an entry does, the selected one included, in place of the element's handler.
    void onChoose(std::function<void(int)> choose) { choose_ = std::move(choose); }
    void onHelp(Hand::Action help) { help_ = std::move(help); }

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void SyncItems(const ListBox& list);
    void SyncColors(const ListBox& list);

    const Hand& hand_;
    ElementRef<ListBox> element_;
    Hand::Action help_;
    std::function<void(int)> choose_;
    std::vector<std::string> items_;
    Color back_ = colors::kWhite;
    Color fore_ = colors::kButtonText;
    bool dark_ = false;
};

} // namespace zentrel::view

#pragma once

#include <cstdint>
#include <vector>

#include "screens/menu_model.h"
#include "screens/qt/hand.h"

class QAction;
class QMenu;
class QMenuBar;

namespace zentrel::view {

/// The menu bar made from its model: real actions with their shortcuts.
class MenuView {
  public:
    MenuView(const Hand& hand, MenuModel& model, QMenuBar& bar);

    void Sync();

  private:
    /// An action beside the entry that it shows. Entries stay put while the layout does.
    struct Shown {
        const MenuNode* node;
        QAction* action;
    };

    void Build();
    void Fill(QMenu& menu, const MenuNode& parent);
    void AddEntry(QMenu& menu, const MenuNode& node);
    void AddItem(QMenu& menu, const MenuNode& array, std::size_t index);
    void SyncOne(const Shown& shown) const;

    const Hand& hand_;
    MenuModel& model_;
    QMenuBar& bar_;
    std::vector<Shown> shown_;
    std::uint64_t layout_ = 0;
};

} // namespace zentrel::view

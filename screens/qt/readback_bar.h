#pragma once

#include <vector>

#include <QWidget>

#include "screens/qt/hand.h"

namespace zentrel {
class RegistersScreen;
}

namespace zentrel::view {

class EntryBox;
class OptionMark;
class PushButton;

/// Below the rows, with a read-back device: reads one field by name, in one of three bases.
class ReadbackBar : public QWidget {
  public:
    ReadbackBar(const Hand& hand, RegistersScreen& model, QWidget* parent);

    /// Shows the elements; the bar itself stands while any of them does.
    void Sync();

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    RegistersScreen& model_;
    EntryBox* name_;
    PushButton* read_;
    std::vector<OptionMark*> bases_;
    EntryBox* value_;
};

} // namespace zentrel::view

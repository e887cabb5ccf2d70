#pragma once

#include <vector>

#include <QDialog>

#include "screens/qt/hand.h"

namespace zentrel {
class frmLoopFilter;
struct ListBox;
} // namespace zentrel

namespace zentrel::view {

class DropList;
class PushButton;

/// The dialog "Loop Filter": the filter's schematic with the lists of its components under it.
class LoopFilterView : public QDialog {
  public:
    LoopFilterView(const Hand& hand, frmLoopFilter& model, QWidget* parent);

    void Sync();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    void Build();

    const Hand& hand_;
    frmLoopFilter& model_;
    std::vector<DropList*> lists_;
    PushButton* close_ = nullptr; ///< Null until the dialog is opened for the first time.
};

} // namespace zentrel::view

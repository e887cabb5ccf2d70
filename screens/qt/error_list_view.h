#pragma once

#include <string>

#include <QDialog>

#include "screens/qt/hand.h"

class QPlainTextEdit;

namespace zentrel {
class ErrorList;
}

namespace zentrel::view {

class CaptionLabel;
class PushButton;

/// The error list. The main window stays in use while it is open.
class ErrorListView : public QDialog {
  public:
    ErrorListView(const Hand& hand, ErrorList& model, QWidget* parent);
    void Sync();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void Build();

    const Hand& hand_;
    ErrorList& model_;
    CaptionLabel* label_ = nullptr;
    QPlainTextEdit* text_ = nullptr;
    PushButton* clear_ = nullptr;
    PushButton* ok_ = nullptr;
    std::string shown_;
};

} // namespace zentrel::view

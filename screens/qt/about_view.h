#pragma once

#include <QDialog>

#include "screens/qt/hand.h"

class QPlainTextEdit;

namespace zentrel {
class AboutDialog;
}

namespace zentrel::view {

class CaptionLabel;
class PushButton;

/// The about dialog. It isn't modal; any key closes it.
class AboutView : public QDialog {
  public:
    AboutView(const Hand& hand, AboutDialog& model, QWidget* parent);
    void Sync();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Build();

    const Hand& hand_;
    AboutDialog& model_;
    std::vector<CaptionLabel*> labels_;
    QPlainTextEdit* history_ = nullptr;
    PushButton* version_ = nullptr;
    PushButton* ok_ = nullptr;
    int height_ = 0;
};

} // namespace zentrel::view

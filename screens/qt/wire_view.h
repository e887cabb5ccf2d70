#pragma once

#include <cstdint>
#include <vector>

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include "screens/qt/hand.h"

class QLineEdit;
class QSplitter;
class QTableView;

namespace zentrel {
class WireScreen;
}

namespace zentrel::view {

class CaptionLabel;
class PushButton;
class ScrollPage;
class WireDetailsModel;
class WireDiagram;
class WireTableModel;

/// The wire monitor, a window of its own beside the main one: the list above, and below it the
/// lines of the selected record over time and what it says.
class WireView : public QWidget {
  public:
    WireView(const Hand& hand, WireScreen& model);

    void Sync();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Build();
    QWidget* MakeBar();
    QWidget* MakeTable();
    QWidget* MakeLower();
    PushButton* AddButton(Button& element, const char* name, const QString& tip, Hand::Action click,
                          QWidget* parent);
    void SizeColumns();
    void SyncRows();
    void SyncShown();
    bool TooSoon();

    const Hand& hand_;
    WireScreen& model_;
    QLineEdit* filter_ = nullptr;
    QTableView* table_ = nullptr;
    WireTableModel* rows_ = nullptr;
    WireDiagram* diagram_ = nullptr;
    WireDetailsModel* details_ = nullptr;
    CaptionLabel* count_ = nullptr;
    std::vector<PushButton*> buttons_;
    std::uint64_t raised_ = 0;
    std::uint64_t shownRecord_ = ~std::uint64_t{0};
    int bits_ = 0; ///< The longest word that the bits' column has room for.
    QElapsedTimer drawn_;
    QTimer later_;
};

} // namespace zentrel::view

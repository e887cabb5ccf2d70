#pragma once

#include <string>

#include <QCheckBox>
#include <QRadioButton>

#include "screens/qt/hand.h"
#include "screens/qt/tint.h"

namespace zentrel::view {

/// A check box bound to its element. A long caption elides, with the whole of it as tooltip.
class CheckMark : public QCheckBox {
  public:
    CheckMark(const Hand& hand, ElementRef<CheckBox> element, QWidget* parent);

    void Sync();
    void onHelp(Hand::Action help) { help_ = std::move(help); }
    QSize minimumSizeHint() const override;

  protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Elide();

    const Hand& hand_;
    ElementRef<CheckBox> element_;
    Hand::Action help_;
    std::string caption_;
    Tint tint_;
};

/// One option of a group bound to its element. The group's own handler clears the sisters.
class OptionMark : public QRadioButton {
  public:
    OptionMark(const Hand& hand, ElementRef<Option> element, Hand::Action select, QWidget* parent);

    void Sync();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    OptionMark* Neighbour(int step) const;

    const Hand& hand_;
    ElementRef<Option> element_;
    std::string caption_;
    Tint tint_;
    bool first_; ///< The group's first: takes the Tab key while none is selected.
};

} // namespace zentrel::view

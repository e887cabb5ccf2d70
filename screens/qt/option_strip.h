#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include <QWidget>

#include "screens/qt/hand.h"

namespace zentrel::view {

class OptionMark;

/// A named row of options on one line: the name on the left, then the options in columns that line
/// up with the rows above and below.
class OptionStrip : public QWidget {
  public:
    using OptionAt = std::function<ElementRef<Option>(std::size_t)>;

    /// `select` gets the option's number; `elementName` names the widgets, from number
    /// `firstNumber` on.
    OptionStrip(const Hand& hand, ElementRef<Frame> name, const OptionAt& at, std::size_t count,
                const std::function<void(int)>& select, const char* elementName,
                std::size_t firstNumber, QWidget* parent);

    void Sync();
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    static int NameWidth();
    static int ColumnWidth();
    /// The same in a window that is narrow: wide enough for two digits.
    static int LeastColumnWidth();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Place();

    ElementRef<Frame> name_;
    std::vector<OptionMark*> marks_;
    QString text_;
};

} // namespace zentrel::view

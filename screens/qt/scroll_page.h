#pragma once

#include <QScrollArea>

namespace zentrel::view {

/// A page of one tab that scrolls when its content doesn't fit; its bars exist only then.
class ScrollPage : public QScrollArea {
  public:
    explicit ScrollPage(QWidget* parent = nullptr);

    /// Whether a bar stands there now.
    bool scrollsDown() const;
    bool scrollsAcross() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace zentrel::view

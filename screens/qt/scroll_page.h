#pragma once

#include <QScrollArea>

namespace zentrel::view {

/// What a page scrolls: opaque, so that scrolling moves pixels and repaints only what comes in.
class PageContent : public QWidget {
  public:
    PageContent();

  protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A page of one tab that scrolls when its content doesn't fit; its bars exist only then.
class ScrollPage : public QScrollArea {
  public:
    explicit ScrollPage(QWidget* parent = nullptr);

    /// What stands in the middle of a page that has no content; empty while it has some.
    void SetHint(const QString& hint);

    /// Whether a bar stands there now.
    bool scrollsDown() const;
    bool scrollsAcross() const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString hint_;
};

} // namespace zentrel::view

#pragma once

#include <string>

#include <QWidget>

namespace zentrel {
class StatusBar;
}

namespace zentrel::view {

/// The status bar: the route, the line of the last event, and the badge at the right end.
class StatusBarView : public QWidget {
  public:
    StatusBarView(const StatusBar& model, QWidget* parent);

    void Sync();
    /// The application's font has changed.
    void FitFont();
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    class Badge;

    int RoutePanelWidth() const;
    QRect LineRect() const;

    const StatusBar& model_;
    QString route_, line_;
    Badge* badge_;
};

} // namespace zentrel::view

#pragma once

#include <QWidget>

namespace zentrel::view {

/// What one tab shows. `Sync` compares what stands on the screen with the model and touches only
/// what differs; it is called for the selected tab alone.
class ScreenView : public QWidget {
  public:
    explicit ScreenView(QWidget* parent = nullptr) : QWidget(parent) {}
    virtual void Sync() = 0;
};

} // namespace zentrel::view

#pragma once

#include <string>

#include <QWidget>

#include "screens/qt/hand.h"

namespace zentrel::view {

/// A group: a card with its name above what it holds. The name comes from the element, or stands.
class GroupFrame : public QWidget {
  public:
    enum class Padding { Roomy, Tight };

    GroupFrame(ElementRef<Frame> element, QWidget* parent, Padding padding = Padding::Roomy);
    GroupFrame(const QString& title, QWidget* parent);

    void Sync();
    /// Room for the contents, inside the padding and below the name.
    QMargins ContentMargins() const;
    const QString& title() const { return title_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ElementRef<Frame> element_;
    std::string caption_;
    QString title_;
    int inset_;
};

} // namespace zentrel::view

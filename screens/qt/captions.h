#pragma once

#include <string>

#include <QPushButton>
#include <QWidget>

#include "screens/qt/hand.h"
#include "screens/qt/tint.h"

namespace zentrel::view {

/// A label bound to its element. What doesn't fit elides, with the whole text as tooltip.
class CaptionLabel : public QWidget {
  public:
    enum class Tone { Text, Muted, Strong, Bits };

    CaptionLabel(ElementRef<Label> element, Tone tone, Qt::Alignment alignment, QWidget* parent);

    void Sync();
    /// The tooltip to show when the text isn't elided.
    void SetTip(const QString& tip) { tip_ = tip, Tip(); }
    void onClick(const Hand& hand, Hand::Action click);
    void onHelp(const Hand& hand, Hand::Action help);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    const QString& text() const { return text_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void Tip();
    QColor Ink() const;

    ElementRef<Label> element_;
    Tone tone_;
    Qt::Alignment alignment_;
    const Hand* hand_ = nullptr;
    Hand::Action click_, help_;
    std::string caption_;
    QString text_, tip_;
    Color fore_ = colors::kButtonText;
    Color back_ = colors::kWhite;
};

/// Text that never changes: a unit, a caption.
class FixedLabel : public QWidget {
  public:
    FixedLabel(const QString& text, CaptionLabel::Tone tone, Qt::Alignment alignment,
               QWidget* parent);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
    CaptionLabel::Tone tone_;
    Qt::Alignment alignment_;
};

/// A button bound to its element.
class PushButton : public QPushButton {
  public:
    PushButton(const Hand& hand, ElementRef<Button> element, Hand::Action click, QWidget* parent);

    void Sync();

  private:
    ElementRef<Button> element_;
    std::string caption_;
    Tint tint_;
};

} // namespace zentrel::view

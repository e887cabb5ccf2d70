#pragma once

#include <vector>

#include <QPolygonF>
#include <QRectF>
#include <QString>

#include "form/elements.h"
#include "screens/qt/scroll_page.h"

class QPainter;

namespace zentrel::view {

/// Where a part of a diagram stands with regard to the signal.
enum class Path {
    Plain,  ///< A diagram that marks no path.
    Active, ///< The signal goes here: the accent.
    Off     ///< The signal doesn't go here: greyed.
};

/// One drawn part of a diagram. Places are in logical pixels of the canvas.
struct DiagramItem {
    enum class Kind {
        Block,      ///< Rounded rectangle: `text` is its name at the top, `value` stands under it.
        Oscillator, ///< Circle with a sine, as large as `rect`.
        Wire,       ///< Signal line through `points`; an arrowhead at its end when `arrow`.
        Dot,        ///< Where a wire branches, in the middle of `rect`.
        Pin,        ///< Small square in `rect`; its name `text` above it and in its tip.
        Text,       ///< `text` in `rect`, by `align` and `tone`.
        LowPass,    ///< A loop filter's curve in `rect`.
        Buffer,     ///< Triangle that points right.
        Symbol,     ///< Closed outline through `points`, drawn like a block.
        Outline     ///< Frame round what the hand is at, in the colour `meaning`; white: accent.
    };
    enum class Tone { Name, Unit, Value, Strong };

    Kind kind = Kind::Block;
    QRectF rect = {};
    QPolygonF points = {};
    QString text = {}, value = {};
    QString tip = {}; ///< Shown while the mouse rests on the item.
    Path path = Path::Plain;
    Color meaning = colors::kWhite; ///< A block's meaning colour; white is none.
    Tone tone = Tone::Name;
    Qt::Alignment align = Qt::AlignCenter;
    bool arrow = false;

    bool operator==(const DiagramItem&) const = default;
    /// All that the item can cover, its outline and a pin's name included.
    QRectF Bounds() const;
};

/// The drawn part of a diagram as a list: built anew at each refresh, drawn only where it differs
/// from the one before. Widgets lie on top of it.
class DiagramScene {
  public:
    DiagramItem& Block(const QRectF& rect, const QString& name, const QString& value = {});
    DiagramItem& Oscillator(const QPointF& centre, double radius);
    /// A wire through corners; the last leg ends in an arrowhead unless told otherwise.
    DiagramItem& Wire(const QPolygonF& points, bool arrow = true);
    DiagramItem& Dot(const QPointF& at);
    DiagramItem& Pin(const QPointF& at, const QString& name);
    DiagramItem& Text(const QRectF& rect, const QString& text,
                      DiagramItem::Tone tone = DiagramItem::Tone::Name,
                      Qt::Alignment align = Qt::AlignCenter);
    DiagramItem& LowPass(const QRectF& rect);
    DiagramItem& Buffer(const QRectF& rect);
    DiagramItem& Symbol(const QPolygonF& corners);
    DiagramItem& Outline(const QRectF& rect, Color meaning = colors::kWhite);

    /// Paints what `clip` touches.
    void Paint(QPainter& painter, const QRectF& clip) const;
    /// The tip of the topmost item at a place; empty when it has none.
    QString TipAt(const QPointF& at) const;
    /// Everything that looks different in the other scene.
    QRegion Difference(const DiagramScene& other) const;
    /// The lower right end of all items.
    QSizeF extent() const;

  private:
    DiagramItem& Add(DiagramItem::Kind kind, const QRectF& rect);

    std::vector<DiagramItem> items_;
};

/// The page that a diagram is drawn on: content of a ScrollPage, parent of the diagram's widgets.
class DiagramCanvas : public PageContent {
  public:
    /// Shows a scene, repainting only what differs from the present one.
    void Show(DiagramScene scene);
    const DiagramScene& scene() const { return scene_; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    DiagramScene scene_;
};

/// Height of a block's name line, its distance from the top edge included: what stands in a block
/// begins below it.
double BlockNameHeight();
/// Room that a pin's name takes; a very long one elides and stays whole in the tip.
double PinNameWidth(const QString& name);

} // namespace zentrel::view

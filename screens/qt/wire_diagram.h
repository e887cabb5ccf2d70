#pragma once

#include <optional>

#include <QWidget>

#include "transport/monitor/wire_picture.h"

namespace zentrel::view {

/// A record's lines over time. The wheel and the plus and minus keys zoom, a drag pans, the pointer
/// or the arrow keys move a cursor that tells time, bit and levels.
class WireDiagram : public QWidget {
  public:
    explicit WireDiagram(QWidget* parent = nullptr);

    /// Shows another record; one of the same length keeps the part that is in sight.
    void Show(WirePicture picture, const QString& title);
    /// What stands there while there is no picture.
    void SetHint(const QString& hint);

    void Fit();
    /// `factor` above 1 shows less; `step` stays where it is.
    void Zoom(double factor, double step);
    /// Moves the cursor to the next edge of any line, or the one before.
    void StepCursor(bool forward);
    /// What the cursor says: "1.25 µs  bit 7 = 1". Empty without a cursor.
    QString Readout() const;
    /// Steps in sight.
    double visibleSteps() const { return PlotWidth() / scale_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    struct Row {
        double top, header, height;
        double High() const { return top + header; }
        double Low() const { return top + header + height; }
    };

    int LabelWidth() const;
    double PlotWidth() const;
    double Pad() const;
    double X(double step) const { return LabelWidth() + (step - first_) * scale_; }
    double StepAt(double x) const { return first_ + (x - LabelWidth()) / scale_; }
    /// `spare` is how much taller each line is than it needs to be.
    std::vector<Row> Rows(double spare) const;
    double Spare() const;
    static double Bottom(const std::vector<Row>& rows);
    void KeepInSight();
    void MoveCursor(std::optional<double> step);
    QString TimeText(double step) const;
    const WirePicture::Bit* BitAt(double step) const;

    void PaintHead(QPainter& painter) const;
    void PaintBits(QPainter& painter, const Row& row, bool readBack) const;
    void PaintLine(QPainter& painter, const Row& row, const WirePicture::Line& line) const;
    void PaintLabel(QPainter& painter, const Row& row, const WirePicture::Line& line) const;
    void PaintAxis(QPainter& painter, double top) const;
    void PaintCursor(QPainter& painter, double bottom) const;

    WirePicture picture_;
    QString title_, hint_;
    double first_ = 0, scale_ = 1;
    bool fitted_ = true;
    std::optional<double> cursor_;
    std::optional<int> grabbed_; // where the pointer was when it took hold
};

} // namespace zentrel::view

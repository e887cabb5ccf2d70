#pragma once

#include <array>

#include <QPoint>
#include <QRect>
#include <QSize>

#include "clock/clock_panel.h"

namespace zentrel::view {

/// Where everything of a clock block's drawing stands, in pixels on the window's grid. The signal
/// path is laid out from left to right: what the panel hides takes no room, and its wires close up.
/// A rectangle of what is absent is empty.
struct ClockPlan {
    explicit ClockPlan(const ClockPanel& panel);

    /// An oscillator: circle, name above it, box with its frequency, unit behind the box.
    struct Source {
        QRect name, circle, box, unit;
        QPoint Out() const { return {circle.left() + circle.width(), circle.center().y() + 1}; }
        bool operator==(const Source&) const = default;
    };
    /// A name and its value on one line of a block.
    struct Readout {
        QRect name, value;
        bool operator==(const Readout&) const = default;
    };
    struct Row {
        QRect name, divider, delay, mux, output, frequency, unit;
        int axis = 0;
        bool operator==(const Row&) const = default;
    };

    int axis = 0; ///< Height of the path through PLL and VCO.
    Source reference, vco, external;
    QRect pll, outerFilter, innerFilter, divider, globalDelay;
    std::array<Readout, 3> readouts;  ///< R, PDF, N.
    std::array<Readout, 4> filter;    ///< R3, C3, R4, C4.
    QRect inputDivider, bypass;       ///< In the VCO divider's block.
    Readout divided;                  ///< The frequency behind the divider.
    std::array<Readout, 2> delays;    ///< N and R of the global delay.
    QRect inputMux, muxList, muxName; ///< The mux, the list above it, its name above that.
    std::array<QRect, 3> terminals;   ///< VCO, external source, reference: what reacts.
    QPoint Terminal(int k) const { return terminals[static_cast<std::size_t>(k)].center(); }
    QPoint muxOut;
    int referenceTap = 0;  ///< x at which the reference leaves its wire for the mux,
    int referenceRail = 0; ///< y on which it passes under the blocks,
    int referenceRise = 0; ///< and x on which it climbs to its terminal.
    int externalRise = 0;  ///< The same of the external source.
    int outX = 0;          ///< x on which the path leads down to the channels,
    int busX = 0;          ///< y and x of the line that feeds them.
    int busY = 0;
    QRect header;
    std::array<Row, kClockChannels> rows;
    QSize size;

    bool operator==(const ClockPlan&) const = default;

  private:
    void PlacePath(const ClockPanel& panel);
    Source PlaceSource(int left) const;
    int PlaceBlock(QRect& block, int left, int width) const;
    void PlaceReadouts();
    void PlaceDivider(const ClockPanel& panel);
    void PlaceMux(const ClockPanel& panel, int left);
    void PlaceSecondRow(const ClockPanel& panel);
    void PlaceLoneSource();
    void PlaceChannels(const ClockPanel& panel);
};

} // namespace zentrel::view

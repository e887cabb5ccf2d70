#pragma once

#include <QWidget>

#include "form/elements.h"
#include "screens/qt/hand.h"

/// What all bricks share: a brick names an element, shows it when told to `Sync`, and hands the
/// engineer's actions on. Between two calls of `Sync` it trusts nothing of what it has seen.
namespace zentrel::view {

/// Brings the flags that every element has onto its widget, touching it only when they differ.
inline void SyncFlags(QWidget& widget, const Element& element) {
    if (widget.isHidden() == element.Visible) widget.setVisible(element.Visible);
    if (widget.isEnabledTo(widget.parentWidget()) != element.Enabled)
        widget.setEnabled(element.Enabled);
}

/// Sets a tooltip when it differs.
inline void SyncTip(QWidget& widget, const QString& tip) {
    if (widget.toolTip() != tip) widget.setToolTip(tip);
}

} // namespace zentrel::view

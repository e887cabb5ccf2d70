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

/// Takes a widget away at once, and destroys it when no event of its own is under way any more: the
/// action that removes a widget may have come from it.
inline void Discard(QWidget* widget) {
    widget->hide();
    widget->setParent(nullptr);
    widget->deleteLater();
}

inline void DiscardChildren(const QWidget& parent) {
    for (QWidget* child : parent.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        Discard(child);
}

} // namespace zentrel::view

#include "screens/qt/break_key.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace zentrel::view {

namespace {

bool IsUsersDoing(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace

bool BreakKey::Pressed() {
    break_ = false;
    QCoreApplication::instance()->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    QCoreApplication::instance()->removeEventFilter(this);
    const bool held = escape_.isValid() && escape_.elapsed() >= kHoldMs;
    if (held) escape_.invalidate();
    return break_ || held;
}

bool BreakKey::eventFilter(QObject*, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::KeyPress || type == QEvent::KeyRelease) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool down = type == QEvent::KeyPress;
        const bool control = key->modifiers().testFlag(Qt::ControlModifier);
        if (down && (key->key() == Qt::Key_Cancel || (control && key->key() == Qt::Key_Pause))) {
            break_ = true;
        } else if (key->key() == Qt::Key_Escape && !key->isAutoRepeat()) {
            if (down) {
                escape_.start();
            } else {
                escape_.invalidate();
            }
        }
    }
    return IsUsersDoing(type) || type == QEvent::Timer;
}

} // namespace zentrel::view

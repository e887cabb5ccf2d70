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
    QCoreApplication* application = QCoreApplication::instance();
    break_ = false;
    looking_ = true;
    application->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    looking_ = false;
    eaten_ = escape_.isValid() && escape_.elapsed() >= kHoldMs;
    if (eaten_) {
        escape_.invalidate();
    } else {
        application->removeEventFilter(this);
    }
    return break_ || eaten_;
}

// Whether the key is the one that is held since before the question came.
bool BreakKey::LookAt(const QKeyEvent& key) {
    const bool down = key.type() == QEvent::KeyPress;
    const bool escape = key.key() == Qt::Key_Escape;
    if (eaten_) {
        if (escape && !key.isAutoRepeat()) {
            eaten_ = false;
            QCoreApplication::instance()->removeEventFilter(this);
            return !down;
        }
        return escape;
    }
    const bool control = key.modifiers().testFlag(Qt::ControlModifier);
    if (down && (key.key() == Qt::Key_Cancel || (control && key.key() == Qt::Key_Pause))) {
        break_ = true;
    } else if (escape && !key.isAutoRepeat()) {
        if (down) {
            escape_.start();
        } else {
            escape_.invalidate();
        }
    }
    return false;
}

bool BreakKey::eventFilter(QObject*, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease;
    if (isKey && LookAt(*static_cast<QKeyEvent*>(event))) return true;
    return looking_ && (IsUsersDoing(type) || type == QEvent::Timer);
}

} // namespace zentrel::view

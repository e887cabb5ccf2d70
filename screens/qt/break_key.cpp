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

bool BreakKey::IsDown() const {
    return last_.isValid() && (press_ || last_.elapsed() < kGapMs);
}

bool BreakKey::Pressed() {
    QCoreApplication* application = QCoreApplication::instance();
    break_ = false;
    looking_ = true;
    application->installEventFilter(this);
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
    looking_ = false;
    eaten_ = down_.isValid() && IsDown() && down_.elapsed() >= holdMs_;
    if (eaten_) {
        down_.invalidate();
    } else {
        application->removeEventFilter(this);
    }
    return break_ || eaten_;
}

// Whether the key is the one that is held since before the question came.
bool BreakKey::LookAt(const QKeyEvent& key) {
    const bool control = key.modifiers().testFlag(Qt::ControlModifier);
    if (key.type() == QEvent::KeyPress &&
        (key.key() == Qt::Key_Cancel || (control && key.key() == Qt::Key_Pause))) {
        break_ = true;
    }
    if (key.key() != Qt::Key_Escape) return false;
    const bool goesOn = IsDown();
    press_ = key.type() == QEvent::KeyPress;
    last_.start();
    if (eaten_ && !goesOn) {
        eaten_ = false;
        QCoreApplication::instance()->removeEventFilter(this);
    } else if (looking_ && !(goesOn && down_.isValid())) {
        down_.start();
    }
    return eaten_;
}

bool BreakKey::eventFilter(QObject*, QEvent* event) {
    const QEvent::Type type = event->type();
    const bool isKey = type == QEvent::KeyPress || type == QEvent::KeyRelease;
    if (isKey && LookAt(*static_cast<QKeyEvent*>(event))) return true;
    return looking_ && (IsUsersDoing(type) || type == QEvent::Timer);
}

} // namespace zentrel::view

#include "screens/qt/about_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScreen>
#include <QVBoxLayout>

#include "screens/about.h"
#include "screens/qt/captions.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"

namespace zentrel::view {

namespace {
constexpr Qt::Alignment kLeft = Qt::AlignLeft | Qt::AlignVCenter;
}

AboutView::AboutView(const Hand& hand, AboutDialog& model, QWidget* parent)
    : QDialog(parent), hand_(hand), model_(model) {
    setObjectName(QStringLiteral("frmAbout"));
}

void AboutView::Build() {
    const Metrics& m = Metrics::Now();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(m.Units(3), m.Units(3), m.Units(3), m.Units(2));
    column->setSpacing(m.unit);
    const auto add = [&](Label& data, CaptionLabel::Tone tone, const char* name) {
        auto* label = new CaptionLabel(data, tone, kLeft, this);
        label->setObjectName(QLatin1String(name));
        labels_.push_back(label);
        column->addWidget(label);
        return label;
    };
    CaptionLabel* title = add(model_.LAB_1, CaptionLabel::Tone::Strong, "LAB_1");
    title->setFont(UiFont(6, true));
    title->setMinimumHeight(m.textHeight * 2);
    add(model_.lblPrgmVersion, CaptionLabel::Tone::Text, "lblPrgmVersion");
    add(model_.lblPartVersion, CaptionLabel::Tone::Text, "lblPartVersion");
    column->addSpacing(m.unit);
    add(model_.Label5, CaptionLabel::Tone::Muted, "Label5");
    add(model_.Label4, CaptionLabel::Tone::Muted, "Label4");
    column->addSpacing(m.unit);
    history_ = new QPlainTextEdit(this);
    history_->setObjectName(QStringLiteral("Text1"));
    history_->setReadOnly(true);
    history_->setTabChangesFocus(true);
    history_->setMinimumHeight(m.Units(16));
    history_->hide();
    column->addWidget(history_, 1);
    auto* row = new QHBoxLayout;
    version_ = new PushButton(
        hand_, model_.Command1, [this] { model_.ClickVersionInfo(); }, this);
    version_->setObjectName(QStringLiteral("Command1"));
    ok_ = new PushButton(
        hand_, model_.OkayButton, [this] { model_.Close(); }, this);
    ok_->setObjectName(QStringLiteral("OkayButton"));
    ok_->installEventFilter(this);
    row->addWidget(version_);
    row->addStretch();
    row->addWidget(ok_);
    column->addLayout(row);
    setMinimumWidth(m.Units(48));
}

void AboutView::Sync() {
    if (!model_.Open) {
        if (!isHidden()) hide();
        return;
    }
    if (!ok_) Build();
    const Hand::Busy busy(hand_);
    setWindowTitle(FromModel(model_.Caption));
    for (CaptionLabel* label : labels_)
        label->Sync();
    version_->Sync();
    ok_->Sync();
    const bool enlarged = model_.Height > AboutDialog::kHeight;
    history_->setVisible(enlarged);
    const QString text = FromModel(model_.Text1.Text).remove(QLatin1Char('\r'));
    if (history_->toPlainText() != text) history_->setPlainText(text);
    if (!isHidden() && height_ == model_.Height) return;
    height_ = model_.Height;
    const bool opening = isHidden();
    const QPoint corner = pos();
    resize(std::max(opening ? 0 : width(), sizeHint().width()),
           enlarged ? Metrics::Now().Units(56) : minimumSizeHint().height());
    if (!opening) return move(corner);
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->geometry().center() - rect().center());
    show();
    ok_->setFocus();
}

void AboutView::closeEvent(QCloseEvent* event) {
    event->ignore();
    hand_.Do([this] { model_.Close(); });
}

void AboutView::keyPressEvent(QKeyEvent*) {
    hand_.Do([this] { model_.Close(); });
}

bool AboutView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ok_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Tab && key != Qt::Key_Backtab && key != Qt::Key_Shift) {
            hand_.Do([this] { model_.Close(); });
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace zentrel::view

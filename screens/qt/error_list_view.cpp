#include "screens/qt/error_list_view.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include "screens/error_list.h"
#include "screens/qt/captions.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"

namespace zentrel::view {

ErrorListView::ErrorListView(const Hand& hand, ErrorList& model, QWidget* parent)
    : QDialog(parent), hand_(hand), model_(model) {
    setObjectName(QStringLiteral("frmErrorList"));
}

void ErrorListView::Build() {
    const Metrics& m = Metrics::Now();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(m.Units(2), m.Units(2), m.Units(2), m.Units(2));
    column->setSpacing(m.unit);
    label_ = new CaptionLabel(model_.Label1, CaptionLabel::Tone::Strong,
                              Qt::AlignLeft | Qt::AlignVCenter, this);
    label_->setObjectName(QStringLiteral("Label1"));
    column->addWidget(label_);
    text_ = new QPlainTextEdit(this);
    text_->setObjectName(QStringLiteral("Text1"));
    text_->setReadOnly(true);
    text_->setTabChangesFocus(true);
    text_->setAccessibleName(tr("Logged errors, oldest first"));
    column->addWidget(text_, 1);
    auto* row = new QHBoxLayout;
    clear_ = new PushButton(
        hand_, model_.Command1, [this] { model_.ClickClear(); }, this);
    clear_->setObjectName(QStringLiteral("Command1"));
    ok_ = new PushButton(
        hand_, model_.Command2, [this] { model_.ClickOk(); }, this);
    ok_->setObjectName(QStringLiteral("Command2"));
    row->addWidget(clear_);
    row->addStretch();
    row->addWidget(ok_);
    column->addLayout(row);
    resize(m.Units(64), m.Units(40));
}

void ErrorListView::Sync() {
    if (!model_.Open) {
        if (!isHidden()) hide();
        return;
    }
    if (!ok_) Build();
    const Hand::Busy busy(hand_);
    setWindowTitle(FromModel(model_.Caption));
    label_->Sync();
    clear_->Sync();
    ok_->Sync();
    if (shown_ != model_.Text1.Text) {
        shown_ = model_.Text1.Text;
        text_->setPlainText(FromModel(shown_).remove(QLatin1Char('\r')));
    }
    if (!isHidden()) return;
    show();
    ok_->setFocus();
}

void ErrorListView::closeEvent(QCloseEvent* event) {
    event->ignore();
    hand_.Do([this] { model_.ClickOk(); });
}

void ErrorListView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) return hand_.Do([this] { model_.ClickOk(); });
    QDialog::keyPressEvent(event);
}

} // namespace zentrel::view

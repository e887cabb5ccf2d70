#include "screens/qt/drop_list.h"

#include <QContextMenuEvent>
#include <QWheelEvent>

#include "screens/qt/brick.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/theme.h"

namespace zentrel::view {

DropList::DropList(const Hand& hand, ElementRef<ListBox> element, QWidget* parent)
    : QComboBox(parent), hand_(hand), element_(element) {
    setFocusPolicy(Qt::StrongFocus);
    setFixedHeight(Metrics::Now().boxHeight);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(4);
    connect(this, &QComboBox::activated, this, [this](int index) {
        if (choose_) return hand_.Do([this, index] { choose_(index); });
        ListBox* list = element_.get();
        if (list) hand_.Do([list, index] { list->SetListIndex(index); });
    });
}

void DropList::Sync() {
    const ListBox* list = element_.get();
    if (!list) return;
    const Hand::Busy busy(hand_);
    SyncFlags(*this, *list);
    SyncItems(*list);
    if (currentIndex() != list->ListIndex) setCurrentIndex(list->ListIndex);
    SyncColors(*list);
}

void DropList::SyncItems(const ListBox& list) {
    if (items_ == list.List) return;
    items_ = list.List;
    clear();
    for (const std::string& text : items_) {
        const QString item = FromModel(text);
        addItem(item);
        setItemData(count() - 1, item, Qt::ToolTipRole);
    }
}

void DropList::SyncColors(const ListBox& list) {
    const Theme& theme = Theme::Now();
    if (list.BackColor == back_ && list.ForeColor == fore_ && dark_ == theme.dark) return;
    back_ = list.BackColor;
    fore_ = list.ForeColor;
    dark_ = theme.dark;
    QPalette p;
    if (theme.Fill(back_) != theme.field) {
        p.setColor(QPalette::Base, theme.Fill(back_));
        p.setColor(QPalette::Button, theme.Fill(back_));
        p.setColor(QPalette::ButtonText, theme.InkOn(back_));
        p.setColor(QPalette::Text, theme.InkOn(back_));
    }
    if (fore_ != colors::kButtonText) {
        p.setColor(QPalette::ButtonText, theme.Ink(fore_));
        p.setColor(QPalette::Text, theme.Ink(fore_));
    }
    setPalette(p);
}

void DropList::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

void DropList::contextMenuEvent(QContextMenuEvent* event) {
    if (!help_) return QComboBox::contextMenuEvent(event);
    hand_.Do(help_);
}

} // namespace zentrel::view

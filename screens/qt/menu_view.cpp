#include "screens/qt/menu_view.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "screens/qt/model_text.h"

namespace zentrel::view {

MenuView::MenuView(const Hand& hand, MenuModel& model, QMenuBar& bar)
    : hand_(hand), model_(model), bar_(bar) {
    Build();
}

void MenuView::Build() {
    // The entry that asked for this may be one of those that go.
    for (QMenu* old : bar_.findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
        old->setParent(nullptr);
        old->deleteLater();
    }
    bar_.clear();
    shown_.clear();
    layout_ = model_.layout();
    for (const MenuNode& node : model_.Bar()) {
        QMenu* menu = bar_.addMenu(FromModel(node.Caption));
        menu->setObjectName(FromModel(node.name));
        menu->menuAction()->setObjectName(FromModel(node.name));
        shown_.push_back({&node, menu->menuAction()});
        Fill(*menu, node);
    }
}

void MenuView::Fill(QMenu& menu, const MenuNode& parent) {
    menu.setToolTipsVisible(true);
    for (const MenuNode& node : parent.children) {
        switch (node.kind) {
        case MenuNode::Kind::Separator:
            menu.addSeparator();
            break;
        case MenuNode::Kind::Entry:
            AddEntry(menu, node);
            break;
        case MenuNode::Kind::Submenu: {
            QMenu* below = menu.addMenu(FromModel(node.Caption));
            below->setObjectName(FromModel(node.name));
            shown_.push_back({&node, below->menuAction()});
            Fill(*below, node);
            break;
        }
        case MenuNode::Kind::Array:
            for (std::size_t i = 0; i < node.children.size(); ++i)
                AddItem(menu, node, i);
            break;
        }
    }
}

void MenuView::AddEntry(QMenu& menu, const MenuNode& node) {
    QAction* action = menu.addAction(FromModel(node.Caption));
    action->setObjectName(FromModel(node.name));
    if (!node.shortcut.empty())
        action->setShortcut(QKeySequence(FromModel(node.shortcut), QKeySequence::PortableText));
    action->setCheckable(node.checkable);
    shown_.push_back({&node, action});
    QObject::connect(action, &QAction::triggered, &menu,
                     [this, name = node.name] { hand_.Do([&] { model_.Click(name); }); });
}

void MenuView::AddItem(QMenu& menu, const MenuNode& array, std::size_t index) {
    const MenuNode& item = array.children[index];
    QAction* action = menu.addAction(QString());
    action->setObjectName(IndexedName(array.name.c_str(), index));
    shown_.push_back({&item, action});
    QObject::connect(action, &QAction::triggered, &menu, [this, name = array.name, index] {
        hand_.Do([&] { model_.Click(name, static_cast<int>(index)); });
    });
}

void MenuView::Sync() {
    const Hand::Busy busy(hand_);
    if (layout_ != model_.layout()) Build();
    for (const Shown& shown : shown_)
        SyncOne(shown);
}

void MenuView::SyncOne(const Shown& shown) const {
    const MenuNode& node = *shown.node;
    QAction& action = *shown.action;
    QString caption = node.plainCaption ? Literal(node.Caption) : FromModel(node.Caption);
    if (action.text() != caption) action.setText(caption);
    if (action.isVisible() != node.Visible) action.setVisible(node.Visible);
    if (action.isEnabled() != node.Enabled) action.setEnabled(node.Enabled);
    if (node.Checked && !action.isCheckable()) action.setCheckable(true);
    if (action.isChecked() != node.Checked) action.setChecked(node.Checked);
}

} // namespace zentrel::view

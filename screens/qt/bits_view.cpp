#include "screens/qt/bits_view.h"

#include <algorithm>

#include <QApplication>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>
#include <QVBoxLayout>

#include "screens/bits_screen.h"
#include "screens/qt/brick.h"
#include "screens/qt/captions.h"
#include "screens/qt/drop_list.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/group_frame.h"
#include "screens/qt/marks.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/scroll_page.h"
#include "screens/qt/spinner.h"

namespace zentrel::view {

namespace {

// The model places in twips. One grid step of ours is 96 of them, so that a column holds names of
// some twenty letters in any font.
constexpr int kTwipsPerUnit = 96;
constexpr int kFrameTwips = 2300;
constexpr const char* kFieldProperty = "field";
constexpr int kGapTwips = 240;     // Between two columns of frames.
constexpr int kFirstColumn = 60;   // Where the model's first column begins in a frame.
constexpr int kFrameChrome = 1000; // What the model keeps free of the window's height.

int Pixels(int twips) {
    return twips * Metrics::Now().unit / kTwipsPerUnit;
}
int Twips(int pixels) {
    return pixels * kTwipsPerUnit / Metrics::Now().unit;
}

int ColumnWidth() {
    return Pixels(kFrameTwips) - 2 * Metrics::Now().unit;
}

} // namespace

BitsView::BitsView(const Hand& hand, BitsScreen& model, QWidget* parent)
    : ScreenView(parent), hand_(hand), model_(model), page_(new ScrollPage(this)),
      content_(new PageContent) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(page_);
    page_->setWidgetResizable(false);
    page_->setWidget(content_);
    content_->setAutoFillBackground(false); // It paints itself.
}

BitsSizes BitsView::RealSizes() const {
    const Metrics& m = Metrics::Now();
    // Above and below the frames, and the bar that scrolls them sideways.
    const int pageHeight = height() - m.Units(4) - style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    BitsSizes sizes;
    sizes.windowHeight = Twips(pageHeight) + kFrameChrome;
    sizes.tabWidth = Twips(width());
    sizes.checkBoxHeight = sizes.pinHeight = Twips(m.rowHeight);
    sizes.labelHeight = Twips(m.textHeight + m.half);
    sizes.boxHeight = sizes.listHeight = Twips(m.boxHeight);
    sizes.listWidth = Twips(ColumnWidth());
    sizes.spinnerWidth = Twips(m.unit * 2);
    sizes.boxWidth = sizes.listWidth - sizes.spinnerWidth;
    return sizes;
}

void BitsView::Sync() {
    const Hand::Busy busy(hand_);
    if (width() > 0 && isVisible())
        if (const BitsSizes sizes = RealSizes(); !(sizes == model_.sizes())) model_.SetSizes(sizes);
    if (layout_ != model_.layout()) {
        layout_ = model_.layout();
        if (std::vector<Shape> now = ShapeNow(); now != shape_ || !pinsFrame_) {
            shape_ = std::move(now);
            Rebuild();
        }
        NameWidgets();
        Place();
        const bool empty = model_.Items().empty() && model_.PinCount() == 0;
        page_->SetHint(empty ? tr("No fields. Devices are chosen in the menu Select Device.")
                             : QString());
    }
    for (const Bit& bit : bits_)
        bit.box->Sync();
    for (const Bit& pin : pins_)
        pin.box->Sync();
    for (const Counter& counter : counters_) {
        counter.label->Sync();
        counter.box->Sync();
    }
    for (const List& list : lists_) {
        list.label->Sync();
        list.list->Sync();
    }
    for (GroupFrame* frame : frames_)
        frame->Sync();
    if (pinsFrame_) pinsFrame_->Sync();
}

std::vector<BitsView::Shape> BitsView::ShapeNow() const {
    std::vector<Shape> shape{{-1, model_.FrameCount(), model_.PinCount()}};
    for (const BitsScreen::Item& item : model_.Items())
        shape.push_back({static_cast<int>(item.kind), item.index, item.frame});
    return shape;
}

void BitsView::NameWidgets() {
    for (const Bit& bit : bits_)
        TellOnHover(bit.box, model_.chkPrgmBit[bit.index].Caption);
    for (const Counter& c : counters_) {
        const std::string& field = model_.lblCntr[c.index].Caption;
        c.box->setAccessibleName(FromModel(field));
        TellOnHover(c.label, field);
        TellOnHover(c.box, field);
    }
    for (const List& l : lists_) {
        const std::string& field = model_.lblCmbBits[l.index].Caption;
        l.list->setAccessibleName(FromModel(field));
        TellOnHover(l.label, field);
        TellOnHover(l.list, field);
    }
}

void BitsView::Rebuild() {
    if (content_->isAncestorOf(window()->focusWidget())) setFocus();
    DiscardChildren(*content_);
    frames_.clear();
    bits_.clear();
    pins_.clear();
    counters_.clear();
    lists_.clear();
    for (int k = 0; k < model_.FrameCount(); ++k) {
        const auto index = static_cast<std::size_t>(k);
        frames_.push_back(
            new GroupFrame({model_.fraPrgmBits, index}, content_, GroupFrame::Padding::Tight));
        frames_.back()->setObjectName(IndexedName("fraPrgmBits", index));
    }
    for (const BitsScreen::Item& item : model_.Items()) {
        const auto index = static_cast<std::size_t>(item.index);
        QWidget* frame = frames_[static_cast<std::size_t>(item.frame)];
        switch (item.kind) {
        case BitsFlow::Kind::Bit:
            AddBit(index, frame);
            break;
        case BitsFlow::Kind::Counter:
            AddCounter(index, frame);
            break;
        case BitsFlow::Kind::List:
            AddList(index, frame);
            break;
        }
    }
    pinsFrame_ = new GroupFrame(model_.fraPrgmPins, content_, GroupFrame::Padding::Tight);
    pinsFrame_->setObjectName(QStringLiteral("fraPrgmPins"));
    for (int i = 0; i < model_.PinCount(); ++i) {
        const auto index = static_cast<std::size_t>(i);
        auto* box = new CheckMark(hand_, {model_.chkPrgmPin, index}, pinsFrame_);
        box->setObjectName(IndexedName("chkPrgmPin", index));
        pins_.push_back({index, box});
    }
}

void BitsView::AddBit(std::size_t index, QWidget* frame) {
    auto* box = new CheckMark(hand_, {model_.chkPrgmBit, index}, frame);
    box->setObjectName(IndexedName("chkPrgmBit", index));
    box->onHelp([this, i = static_cast<int>(index)] { model_.HelpOnBit(i); });
    box->installEventFilter(this);
    bits_.push_back({index, box});
}

void BitsView::AddCounter(std::size_t index, QWidget* frame) {
    const int i = static_cast<int>(index);
    const auto help = [this, i] { model_.HelpOnCounter(i); };
    const auto up = [this, i] { model_.SpinUp(i); };
    const auto down = [this, i] { model_.SpinDown(i); };
    Counter c{index, nullptr, nullptr, nullptr};
    c.label = new CaptionLabel({model_.lblCntr, index}, CaptionLabel::Tone::Muted,
                               Qt::AlignLeft | Qt::AlignVCenter, frame);
    c.label->setObjectName(IndexedName("lblCntr", index));
    c.label->onHelp(hand_, help);
    c.box = new EntryBox(hand_, {model_.txtCntrVal, index},
                         {.enter = [this, i] { model_.EnterCounter(i); },
                          .help = help,
                          .stepUp = up,
                          .stepDown = down},
                         frame);
    c.box->setObjectName(IndexedName("txtCntrVal", index));
    c.spinner = new SpinnerButtons(hand_, {model_.spnCntr, index}, up, down, c.box);
    c.spinner->setObjectName(IndexedName("spnCntr", index));
    c.box->Attach(c.spinner);
    c.label->installEventFilter(this);
    c.box->installEventFilter(this);
    counters_.push_back(c);
}

void BitsView::AddList(std::size_t index, QWidget* frame) {
    const auto help = [this, i = static_cast<int>(index)] { model_.HelpOnList(i); };
    List l{index, nullptr, nullptr};
    l.label = new CaptionLabel({model_.lblCmbBits, index}, CaptionLabel::Tone::Muted,
                               Qt::AlignLeft | Qt::AlignVCenter, frame);
    l.label->setObjectName(IndexedName("lblCmbBits", index));
    l.label->onHelp(hand_, help);
    l.list = new DropList(hand_, {model_.cmbBits, index}, frame);
    l.list->setObjectName(IndexedName("cmbBits", index));
    l.label->installEventFilter(this);
    l.list->installEventFilter(this);
    lists_.push_back(l);
}

void BitsView::TellOnHover(QWidget* widget, const std::string& field) {
    widget->setProperty(kFieldProperty, FromModel(field));
}

bool BitsView::eventFilter(QObject* watched, QEvent* event) {
    const QVariant field = watched->property(kFieldProperty);
    if (event->type() != QEvent::ToolTip || !field.isValid())
        return ScreenView::eventFilter(watched, event);
    const QString tip = TipText(model_.TipOn(ToModel(field.toString())));
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), tip,
                       static_cast<QWidget*>(watched));
    return true;
}

void BitsView::Place() {
    const Metrics& m = Metrics::Now();
    const int width = ColumnWidth();
    const auto at = [&](const Element& e) {
        return QPoint(Pixels(e.Left) + m.unit - Pixels(kFirstColumn), Pixels(e.Top));
    };
    for (const Bit& bit : bits_) {
        const QPoint p = at(model_.chkPrgmBit[bit.index]);
        bit.box->setGeometry(p.x(), p.y(), width, m.rowHeight);
    }
    for (const Counter& c : counters_) {
        const QPoint box = at(model_.txtCntrVal[c.index]);
        c.label->setGeometry(box.x(), at(model_.lblCntr[c.index]).y() + m.half, width,
                             m.textHeight);
        c.box->setGeometry(box.x(), box.y(), width, m.boxHeight);
    }
    for (const List& l : lists_) {
        const QPoint box = at(model_.cmbBits[l.index]);
        l.label->setGeometry(box.x(), at(model_.lblCmbBits[l.index]).y() + m.half, width,
                             m.textHeight);
        l.list->setGeometry(box.x(), box.y(), width, m.boxHeight);
    }
    PlaceFrames();
    PlacePins();
    FitContent();
    for (QObject* child : content_->children())
        if (auto* frame = dynamic_cast<GroupFrame*>(child)) frame->Sync();
}

// The model places each frame by the one before it. A frame that grew after that, or one wider than
// its neighbour below, pushes what stands to the right of it or under it out of its way.
void BitsView::PlaceFrames() {
    const int gap = Pixels(kGapTwips), rise = Rise(), shift = Shift();
    int column = 0, columnLeft = 0, below = 0, right = 0;
    for (std::size_t k = 0; k < frames_.size(); ++k) {
        const Frame& f = model_.fraPrgmBits[k];
        if (k == 0 || f.Left != column) {
            column = f.Left;
            columnLeft = std::max(Pixels(column) + shift, k == 0 ? 0 : right + gap);
            below = 0;
        }
        const int top = std::max(Pixels(f.Top) - rise, below);
        frames_[k]->setGeometry(columnLeft, top, Pixels(f.Width), Pixels(f.Height));
        right = std::max(right, columnLeft + Pixels(f.Width));
        below = top + Pixels(f.Height) + gap / 2;
    }
}

// The design leaves more room above the frames than a page needs.
int BitsView::Rise() const {
    const int top = frames_.empty() ? model_.fraPrgmPins.Top : model_.fraPrgmBits[0].Top;
    return Pixels(top) - Metrics::Now().Units(2);
}

// And less on their left.
int BitsView::Shift() const {
    const int left = frames_.empty() ? model_.fraPrgmPins.Left : model_.fraPrgmBits[0].Left;
    return Metrics::Now().Units(2) - Pixels(left);
}

void BitsView::PlacePins() {
    const Metrics& m = Metrics::Now();
    const Frame& f = model_.fraPrgmPins;
    const int width = ColumnWidth();
    int left = Pixels(f.Left) + Shift();
    for (const GroupFrame* frame : frames_)
        left = std::max(left, frame->geometry().right() + Pixels(kGapTwips));
    int bottom = 0;
    for (const Bit& pin : pins_) {
        const Element& e = model_.chkPrgmPin[pin.index];
        const int top = Pixels(e.Top);
        pin.box->setGeometry(m.unit, top, width, m.rowHeight);
        bottom = top + m.rowHeight;
    }
    pinsFrame_->setGeometry(left, Pixels(f.Top) - Rise(), width + 2 * m.unit, bottom + m.half);
}

void BitsView::FitContent() {
    QRect all;
    for (const GroupFrame* frame : frames_)
        all |= frame->geometry();
    if (model_.fraPrgmPins.Visible) all |= pinsFrame_->geometry();
    content_->resize(all.right() + Metrics::Now().unit * 2, all.bottom() + Metrics::Now().unit * 2);
}

void BitsView::resizeEvent(QResizeEvent* event) {
    ScreenView::resizeEvent(event);
    if (isVisible()) Sync();
}

} // namespace zentrel::view

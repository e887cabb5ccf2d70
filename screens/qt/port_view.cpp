#include "screens/qt/port_view.h"

#include <algorithm>

#include <QApplication>
#include <QHBoxLayout>
#include <QStyle>
#include <QVBoxLayout>

#include "screens/port_screen.h"
#include "screens/qt/brick.h"
#include "screens/qt/cable_drawing.h"
#include "screens/qt/captions.h"
#include "screens/qt/entry_box.h"
#include "screens/qt/group_frame.h"
#include "screens/qt/marks.h"
#include "screens/qt/metrics.h"
#include "screens/qt/model_text.h"
#include "screens/qt/option_strip.h"
#include "screens/qt/scroll_page.h"

namespace zentrel::view {

namespace {
constexpr Qt::Alignment kLeft = Qt::AlignLeft | Qt::AlignVCenter;

/// The cards with the choices are as wide as a row of pin options.
int ChoicesWidth(int column = OptionStrip::ColumnWidth()) {
    return OptionStrip::NameWidth() + PortScreen::kPinOptions * column + Metrics::Now().Units(4);
}

} // namespace

PortView::PortView(const Hand& hand, PortScreen& model, QWidget* parent)
    : ScreenView(parent), hand_(hand), model_(model), page_(new ScrollPage(this)),
      content_(new PageContent) {
    const Metrics& m = Metrics::Now();
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(page_);
    halves_ = new QHBoxLayout(content_);
    halves_->setContentsMargins(m.Units(2), m.Units(2), m.Units(2), m.Units(2));
    halves_->setSpacing(m.Units(2));
    choices_ = new QWidget(content_);
    auto* left = new QVBoxLayout(choices_);
    left->setContentsMargins(0, 0, 0, 0);
    left->setSpacing(m.Units(2));
    auto* top = new QHBoxLayout;
    top->setSpacing(m.Units(2));
    top->addWidget(MakeModes());
    top->addWidget(MakeAddress(), 1);
    left->addLayout(top);
    left->addWidget(MakeLines());
    left->addWidget(MakePins());
    left->addStretch();
    halves_->addWidget(choices_, 0, Qt::AlignTop);
    halves_->addWidget(MakeDrawing(), 0, Qt::AlignTop);
    halves_->addStretch();
    page_->setWidget(content_);
    content_->setAutoFillBackground(false); // It paints itself.
}

QWidget* PortView::MakeModes() {
    auto* frame = new GroupFrame(model_.CommunicationSelectFrame, content_);
    frame->setObjectName(QStringLiteral("CommunicationSelectFrame"));
    frames_.push_back(frame);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(frame->ContentMargins());
    column->setSpacing(0);
    for (std::size_t i = 0; i < model_.CommMode.size(); ++i) {
        auto* mark = new OptionMark(
            hand_, model_.CommMode[i], [this, i] { model_.SelectCommMode(static_cast<int>(i)); },
            frame);
        mark->setObjectName(IndexedName("CommMode", i));
        marks_.push_back(mark);
        column->addWidget(mark);
    }
    column->addStretch();
    frame->setMinimumWidth(Metrics::Now().Units(22));
    return frame;
}

QWidget* PortView::MakeAddress() {
    const Metrics& m = Metrics::Now();
    auto* frame = new GroupFrame(model_.frameLPTPortSetup, content_);
    frame->setObjectName(QStringLiteral("frameLPTPortSetup"));
    frames_.push_back(frame);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(frame->ContentMargins());
    column->setSpacing(m.half);
    auto* address = new QWidget(frame);
    address->setObjectName(QStringLiteral("fraPortAdr"));
    auto* row = new QHBoxLayout(address);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(m.unit);
    for (std::size_t i = 0; i < model_.optPortAdr.size(); ++i) {
        auto* mark = new OptionMark(
            hand_, model_.optPortAdr[i], [this, i] { model_.SelectPortAdr(static_cast<int>(i)); },
            address);
        mark->setObjectName(IndexedName("optPortAdr", i));
        marks_.push_back(mark);
        row->addWidget(mark);
    }
    auto* box = new EntryBox(hand_, model_.txtPortAdr, {.enter = [this] { model_.EnterPortAdr(); }},
                             address);
    box->setObjectName(QStringLiteral("txtPortAdr"));
    box->setAccessibleName(tr("Port address, hexadecimal"));
    box->setFixedWidth(m.DigitsWidth(5));
    boxes_.push_back(box);
    row->addWidget(box);
    row->addWidget(new FixedLabel(tr("hex"), CaptionLabel::Tone::Muted, kLeft, address));
    row->addStretch();
    column->addWidget(address);
    auto* reload = new QHBoxLayout;
    reload->setSpacing(m.unit);
    const auto label = [&](Label& data, CaptionLabel::Tone tone, const char* name) {
        auto* l = new CaptionLabel(data, tone, kLeft, frame);
        l->setObjectName(QLatin1String(name));
        labels_.push_back(l);
        reload->addWidget(l);
    };
    label(model_.lblAutoReload, CaptionLabel::Tone::Text, "lblAutoReload");
    auto* period = new EntryBox(hand_, model_.txtAutoReload,
                                {.enter = [this] { model_.EnterAutoReload(); }}, frame);
    period->setObjectName(QStringLiteral("txtAutoReload"));
    period->setAccessibleName(tr("Reload every, seconds"));
    period->setFixedWidth(m.DigitsWidth(4));
    boxes_.push_back(period);
    reload->addWidget(period);
    label(model_.lblAutoRelaodUnits, CaptionLabel::Tone::Muted, "lblAutoRelaodUnits");
    reload->addStretch();
    column->addLayout(reload);
    return frame;
}

QWidget* PortView::MakeLines() {
    auto* frame = new GroupFrame(tr("Bus Lines"), content_);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(frame->ContentMargins());
    column->setSpacing(0);
    struct Line {
        Frame& frame;
        std::array<Option, PortScreen::kPinOptions>& options;
        void (PortScreen::*select)(int);
        const char* name;
    };
    for (const Line& line :
         {Line{model_.fraClockBit, model_.optClockBit, &PortScreen::SelectClockBit, "optClockBit"},
          Line{model_.fraDataBit, model_.optDataBit, &PortScreen::SelectDataBit, "optDataBit"},
          Line{model_.fraLEBit, model_.optLEBit, &PortScreen::SelectLEBit, "optLEBit"}}) {
        auto* strip = new OptionStrip(
            hand_, line.frame,
            [&options = line.options](std::size_t i) { return ElementRef<Option>(options[i]); },
            line.options.size(),
            [&model = model_, select = line.select](int i) { (model.*select)(i); }, line.name, 0,
            frame);
        lines_.push_back(strip);
        column->addWidget(strip);
    }
    return frame;
}

QWidget* PortView::MakePins() {
    pinsFrame_ = new GroupFrame(model_.Frame2, content_);
    pinsFrame_->setObjectName(QStringLiteral("Frame2"));
    frames_.push_back(pinsFrame_);
    pinRows_ = new QVBoxLayout(pinsFrame_);
    pinRows_->setContentsMargins(pinsFrame_->ContentMargins());
    pinRows_->setSpacing(0);
    return pinsFrame_;
}

QWidget* PortView::MakeDrawing() {
    auto* frame = new GroupFrame(model_.Frame1, content_);
    frame->setObjectName(QStringLiteral("Frame1"));
    frames_.push_back(frame);
    auto* column = new QVBoxLayout(frame);
    column->setContentsMargins(frame->ContentMargins());
    drawing_ = new CableDrawing(model_, frame);
    column->addWidget(drawing_, 0, Qt::AlignLeft);
    return frame;
}

void PortView::RebuildPins() {
    if (pinsFrame_->isAncestorOf(window()->focusWidget())) setFocus();
    for (OptionStrip* strip : pins_)
        Discard(strip);
    pins_.clear();
    for (int k = 0; k < model_.PinRows(); ++k) {
        const auto row = static_cast<std::size_t>(k);
        const std::size_t first = row * PortScreen::kPinOptions;
        auto* strip = new OptionStrip(
            hand_, {model_.fraExternalPin, row},
            [this, first](std::size_t i) {
                return ElementRef<Option>(model_.optPrgmBit, first + i);
            },
            PortScreen::kPinOptions,
            [this, first](int i) { model_.SelectPrgmBit(static_cast<int>(first) + i); },
            "optPrgmBit", first, pinsFrame_);
        strip->setObjectName(IndexedName("fraExternalPin", row));
        pins_.push_back(strip);
        pinRows_->addWidget(strip);
    }
}

void PortView::Sync() {
    const Hand::Busy busy(hand_);
    if (layout_ != model_.layout()) {
        layout_ = model_.layout();
        RebuildPins();
    }
    for (GroupFrame* frame : frames_)
        frame->Sync();
    if (pinsFrame_->isHidden() != pins_.empty()) pinsFrame_->setVisible(!pins_.empty());
    for (OptionMark* mark : marks_)
        mark->Sync();
    for (CaptionLabel* label : labels_)
        label->Sync();
    for (EntryBox* box : boxes_)
        box->Sync();
    for (OptionStrip* strip : lines_)
        strip->Sync();
    for (OptionStrip* strip : pins_)
        strip->Sync();
    drawing_->Sync();
}

void PortView::Arrange() {
    // Side by side where there is room, else one below the other.
    const Metrics& m = Metrics::Now();
    const int drawing = drawing_->sizeHint().width() + m.Units(4);
    const bool wide = width() >= ChoicesWidth() + drawing + m.Units(8);
    const auto direction = wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom;
    if (halves_->direction() != direction) halves_->setDirection(direction);
    const int room = width() - m.Units(4) - style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int choices =
        std::clamp(room, ChoicesWidth(OptionStrip::LeastColumnWidth()), ChoicesWidth());
    choices_->setFixedWidth(choices);
    drawing_->parentWidget()->setFixedWidth(wide ? drawing : choices);
}

void PortView::resizeEvent(QResizeEvent* event) {
    Arrange();
    ScreenView::resizeEvent(event);
}

} // namespace zentrel::view
